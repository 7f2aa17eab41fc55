/** The components on the picture: outline, leader line, dot and callout of each. */

import { placeCallout } from "../geometry.js";

/** What a text of the view takes, until the view has measured it: at 1920 pixels of width. */
const LETTER = 7.6;
const LINE = 18;
const PADDING = 4;
const SHOWN = 0.75;
/** Of a callout's height and width. */
const TEXT_HEIGHT = 0.64;
const TEXT_WIDTH = 0.92;
/** Of a capital letter, in sizes of its font. */
const LETTER_WIDTH = 0.62;

/** The size of a component's callout in pixels of the picture. */
export function calloutSize(component, state) {
  const measured = state.measures?.get(component.name);
  if (measured) return measured.size;
  const [width] = state.resolution.split("x").map(Number);
  const scale = (state.size[0] / (width * SHOWN)) * (width / 1920);
  const letters = component.name.length * LETTER + PADDING;
  return [letters * scale, (LINE + PADDING) * scale];
}

export class Shapes {
  #layer;
  #drawn = new Map();

  /** @param layer the group that they are drawn into */
  constructor(layer) {
    this.#layer = layer;
  }

  /** Draws what has changed since the last time. */
  update(state) {
    const { components } = state.document;
    const ids = new Set(components.map((component) => component.id));
    for (const [id, shape] of this.#drawn) {
      if (!ids.has(id)) {
        shape.group.remove();
        this.#drawn.delete(id);
      }
    }
    for (const component of components) this.#updateOne(component, state);
    this.#order(components);
  }

  #updateOne(component, state) {
    const shape = this.#drawn.get(component.id) ?? this.#make(component);
    const selected = component.id === state.selected;
    if (shape.component !== component || shape.measures !== state.measures) {
      draw(shape, component, state);
    }
    Object.assign(shape, { component, measures: state.measures });
    if (shape.selected !== selected) shape.group.node.classList.toggle("selected", selected);
    shape.selected = selected;
    const faulty = Boolean(state.faulty.get(component.id)?.error);
    if (shape.faulty !== faulty) shape.group.node.classList.toggle("faulty", faulty);
    shape.faulty = faulty;
  }

  #make(component) {
    const group = this.#layer.group().addClass("component");
    group.node.dataset.id = component.id;
    const shape = {
      group,
      outline: group.polygon().addClass("outline"),
      leader: group.polyline().addClass("leader"),
      callout: group.rect().addClass("callout"),
      text: group.text("").addClass("name"),
      marker: group.circle().addClass("marker"),
    };
    shape.text.attr("aria-hidden", "true");
    this.#drawn.set(component.id, shape);
    return shape;
  }

  /** The first one in the file gets the pointer, so it lies on top. */
  #order(components) {
    let above = null;
    for (const { id } of components) {
      const { node } = this.#drawn.get(id).group;
      if (node.nextSibling !== above) this.#layer.node.insertBefore(node, above);
      above = node;
    }
  }
}

function draw(shape, component, state) {
  const size = calloutSize(component, state);
  const anchor = component.leader.at(-1) ?? component.marker;
  const [left, top] = placeCallout(component.callout, anchor, size);
  shape.outline.attr("points", component.outline.join(" "));
  shape.leader.attr("points", component.leader.join(" "));
  shape.marker.attr({ cx: component.marker[0], cy: component.marker[1] });
  shape.callout.attr({ x: left, y: top, width: size[0], height: size[1] });
  const measured = state.measures?.get(component.name);
  shape.callout.node.classList.toggle("measured", Boolean(measured));
  const text = measured?.text ?? component.name;
  shape.text.plain(text);
  // To stretch it to the width that the view's own font has would cost each frame of a drag.
  const fitting = (size[0] * TEXT_WIDTH) / Math.max(text.length * LETTER_WIDTH, 1);
  shape.text.attr({
    x: left + size[0] / 2,
    y: top + size[1] / 2,
    "font-size": Math.min(size[1] * TEXT_HEIGHT, fitting),
  });
}
