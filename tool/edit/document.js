/**
 * Changes of a board, each a function from a document to a new one; what did not change stays the
 * same object. A document is what board.yaml says; each component has an `id` besides, by which the
 * page tells it from its namesakes.
 */

import { add, clamp, clampMove, middle } from "./geometry.js";

let lastId = 0;
export const freshId = () => `c${++lastId}`;

export const find = (document, id) => document.components.find((component) => component.id === id);

/** The document with one component changed by `change`. */
export function withComponent(document, id, change) {
  const components = document.components.map((component) =>
    component.id === id ? change(component) : component,
  );
  return { ...document, components };
}

/** A field set, or taken out when its value is undefined. */
export function setField(object, name, value) {
  if (object[name] === value) return object;
  const { [name]: old, ...others } = object;
  return value === undefined ? others : { ...object, [name]: value };
}

/** A list with the item at `index` replaced. */
export const replaceAt = (list, index, item) => list.map((old, i) => (i === index ? item : old));

/** A list without the item at `index`. */
export const removeAt = (list, index) => list.filter((_, i) => i !== index);

/** A list with an item put in at `index`. */
export const insertAt = (list, index, item) => [...list.slice(0, index), item, ...list.slice(index)];

/**
 * A point of a component: which line it belongs to ("outline", "leader" or "marker"), and its place
 * there.
 * @typedef {{line: string, index: number}} Handle
 */

export const pointsOf = (component, line) =>
  line === "marker" ? [component.marker] : component[line];

export const pointOf = (component, { line, index }) => pointsOf(component, line)[index];

export function movePoint(component, { line, index }, point) {
  const value = line === "marker" ? point : replaceAt(component[line], index, point);
  return { ...component, [line]: value };
}

/** Puts a point between this one and the next; of a leader's last point, before it. */
export function splitAfter(component, { line, index }, limit) {
  const points = component[line];
  if (line === "marker" || points.length >= limit) return component;
  const at = line === "leader" && index === points.length - 1 ? Math.max(index - 1, 0) : index;
  const next = points[(at + 1) % points.length];
  return { ...component, [line]: insertAt(points, at + 1, middle(points[at], next)) };
}

export function deletePoint(component, { line, index }, least) {
  if (line === "marker" || component[line].length <= least) return component;
  return { ...component, [line]: removeAt(component[line], index) };
}

const everyPoint = (component) => [...component.outline, ...component.leader, component.marker];

/** A component moved as a whole, as far as the picture reaches. */
export function moveComponent(component, way, size) {
  const step = clampMove(everyPoint(component), way, size);
  return mapPoints(component, (point) => add(point, step));
}

export function mapPoints(component, change) {
  return {
    ...component,
    outline: component.outline.map(change),
    leader: component.leader.map(change),
    marker: change(component.marker),
  };
}

/** All coordinates for a picture of another size. */
export function rescale(document, [oldWidth, oldHeight], size) {
  const change = ([x, y]) =>
    clamp([(x * size[0]) / oldWidth, (y * size[1]) / oldHeight], size);
  return {
    ...document,
    components: document.components.map((component) => mapPoints(component, change)),
  };
}

/** A component one place, or all the way, towards the front or the back of its list. */
export function reorder(document, id, steps) {
  const from = document.components.findIndex((component) => component.id === id);
  const to = Math.min(Math.max(from + steps, 0), document.components.length - 1);
  if (from === to) return document;
  const others = removeAt(document.components, from);
  return { ...document, components: insertAt(others, to, document.components[from]) };
}

export function removeComponent(document, id) {
  const components = document.components.filter((component) => component.id !== id);
  return { ...document, components };
}

/** SATA_2 after SATA_1, DIMM_B after DIMM_A, CPU_2 after CPU; one that is not taken. */
export function nextName(name, taken = new Set()) {
  let next = name;
  do next = stepped(next);
  while (taken.has(next));
  return next;
}

function stepped(name) {
  const number = name.match(/^(.*?)(\d+)$/);
  if (number) {
    const [, head, digits] = number;
    return head + String(Number(digits) + 1).padStart(digits.length, "0");
  }
  const letter = name.match(/^(.*[_ ])([A-Ya-y])$/);
  return letter ? letter[1] + String.fromCharCode(letter[2].charCodeAt(0) + 1) : `${name}_2`;
}
