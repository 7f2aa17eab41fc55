/** What follows from an outline: the dot, the leader line, the callout and its place in a column. */

import { bounds, isInside } from "./geometry.js";
import { nextName } from "./document.js";

/** Shares of the picture's width. */
const COLUMNS = { right: 0.09, left: 0.91 };
const ELBOW = 0.02;
/** From one callout of a column to the next, in pixels of a picture that is 1440 wide. */
const SPACING = 26;
/** How many times as long as high a callout is, about. */
const LENGTH = 4;
const USUAL_WIDTH = 1440;

/** A component around which that outline was drawn; its name and category are a guess. */
export function proposeComponent(document, outline, size) {
  const last = document.components.at(-1);
  const names = new Set(document.components.map((component) => component.name));
  const goesOn = last && /\d$/.test(last.name);
  const marker = proposeMarker(outline);
  return {
    name: goesOn ? nextName(last.name, names) : firstFree("PART_1", names),
    category: last?.category ?? "none",
    outline,
    ...proposeCallout(document, marker, size),
    marker,
  };
}

const firstFree = (name, taken) => (taken.has(name) ? nextName(name, taken) : name);

/** The middle of an outline, or another place within it. */
export function proposeMarker(outline) {
  const [left, top, right, bottom] = bounds(outline);
  const whole = ([x, y]) => [Math.round(x), Math.round(y)];
  const places = [[(left + right) / 2, (top + bottom) / 2]];
  outline.forEach((point, i) => {
    const others = [outline.at(i - 1), outline[(i + 1) % outline.length]];
    const three = [point, ...others];
    places.push([0, 1].map((axis) => three.reduce((sum, one) => sum + one[axis], 0) / 3));
  });
  return whole(places.find((place) => isInside(place, outline)) ?? outline[0]);
}

/** The side of the callout that its column is reached at: callouts of the left column at "right". */
const sideFor = ([x], [width]) => (x < width / 2 ? "right" : "left");

/**
 * A leader line from the dot to a free place in a column: the nearer one unless a side is given. It
 * is looked for above and below, or one way first, so that the lines of a row do not cross.
 */
export function proposeCallout(document, marker, size, callout = sideFor(marker, size), way = 0) {
  const column = columnOf(document, callout, size);
  const spacing = spacingFor(size);
  const fits = (y) =>
    y >= spacing / 2 && y < size[1] - spacing / 2 && isFree(document, [column, y], size);
  const steps = Array.from({ length: Math.ceil(size[1] / spacing) }, (_, step) => step * spacing);
  const ways = way
    ? [...steps.map((step) => way * step), ...steps.map((step) => -way * step)]
    : steps.flatMap((step) => [step, -step]);
  const y = ways.map((step) => marker[1] + step).find(fits) ?? marker[1];
  return { leader: leaderTo(marker, [column, y], callout, size), callout };
}

/** Whether no other callout's line ends so near that the two would stand upon each other. */
export function isFree(document, [x, y], size) {
  const spacing = spacingFor(size);
  return document.components.every(({ leader }) => {
    const end = leader.at(-1);
    return !end || Math.abs(end[1] - y) >= spacing || Math.abs(end[0] - x) >= spacing * LENGTH;
  });
}

const spacingFor = ([width]) => Math.ceil((SPACING * width) / USUAL_WIDTH);

/** Where most callouts of a side stand already, or where a column begins. */
function columnOf(document, callout, [width]) {
  const counts = new Map();
  for (const component of document.components) {
    if (component.callout !== callout || !component.leader.length) continue;
    const [x] = component.leader.at(-1);
    counts.set(x, (counts.get(x) ?? 0) + 1);
  }
  const most = [...counts].sort(([, one], [, other]) => other - one)[0];
  return most ? most[0] : Math.round(width * COLUMNS[callout]);
}

function leaderTo(marker, [column, y], callout, [width]) {
  const elbow = column + Math.round(width * ELBOW) * (callout === "right" ? 1 : -1);
  const between = callout === "right" ? elbow < marker[0] : elbow > marker[0];
  const straight = y === marker[1] || !between;
  return straight ? [marker, [column, y]] : [marker, [elbow, y], [column, y]];
}

/** All callouts in two columns, in the order of their dots, none upon another. */
export function alignCallouts(document, size) {
  const places = new Map();
  for (const callout of ["left", "right"]) {
    const column = Math.round(size[0] * COLUMNS[callout]);
    const members = document.components
      .filter(({ marker }) => sideFor(marker, size) === callout)
      .sort((one, other) => one.marker[1] - other.marker[1]);
    const rows = spread(members.map(({ marker }) => marker[1]), size);
    members.forEach(({ id, marker }, i) => {
      places.set(id, { callout, leader: leaderTo(marker, [column, rows[i]], callout, size) });
    });
  }
  const components = document.components.map((one) => ({ ...one, ...places.get(one.id) }));
  return { ...document, components };
}

/** Rows in their order, moved apart as far as they must be and the picture allows. */
function spread(rows, [width, height]) {
  const spacing = Math.min(spacingFor([width]), Math.floor(height / (rows.length + 1)));
  const low = Math.ceil(spacing / 2);
  const placed = [];
  for (const row of rows) placed.push(Math.max(row, (placed.at(-1) ?? low - spacing) + spacing));
  let limit = height - low;
  for (let i = placed.length - 1; i >= 0; i--) {
    placed[i] = Math.min(placed[i], limit);
    limit = placed[i] - spacing;
  }
  return placed;
}
