/**
 * Points and lines of a picture. A point is [x, y] in whole pixels.
 * @typedef {[number, number]} Point
 */

export const distance = ([x1, y1], [x2, y2]) => Math.hypot(x1 - x2, y1 - y2);

export const add = ([x, y], [dx, dy]) => [x + dx, y + dy];

export const middle = ([x1, y1], [x2, y2]) => [Math.round((x1 + x2) / 2), Math.round((y1 + y2) / 2)];

/** A point moved into a picture of that size. */
export function clamp([x, y], [width, height]) {
  const inside = (value, limit) => Math.min(Math.max(Math.round(value), 0), limit - 1);
  return [inside(x, width), inside(y, height)];
}

/** The way that a movement may go without leading one of the points out of the picture. */
export function clampMove(points, [dx, dy], [width, height]) {
  const inside = (move, values, limit) =>
    Math.min(Math.max(move, -Math.min(...values)), limit - 1 - Math.max(...values));
  return [
    inside(Math.round(dx), points.map(([x]) => x), width),
    inside(Math.round(dy), points.map(([, y]) => y), height),
  ];
}

/** Left, top, right and bottom of the points. */
export function bounds(points) {
  const columns = points.map(([x]) => x);
  const rows = points.map(([, y]) => y);
  return [Math.min(...columns), Math.min(...rows), Math.max(...columns), Math.max(...rows)];
}

export const rectangle = ([x1, y1], [x2, y2]) => [[x1, y1], [x2, y1], [x2, y2], [x1, y2]];

/** Whether a point lies inside an outline, by the crossings of a ray. */
export function isInside([x, y], outline) {
  let inside = false;
  outline.forEach(([x1, y1], i) => {
    const [x2, y2] = outline[(i + 1) % outline.length];
    if (y1 > y !== y2 > y && x < ((x2 - x1) * (y - y1)) / (y2 - y1) + x1) inside = !inside;
  });
  return inside;
}

/** The nearest of the points that is no farther than `reach`; undefined when there is none. */
export function nearest(points, point, reach) {
  let best;
  let least = reach;
  for (const other of points) {
    const away = distance(other, point);
    if (away <= least) [best, least] = [other, away];
  }
  return best;
}

/** Where a callout stands whose side touches the anchor: left and top. */
export function placeCallout(side, [x, y], [width, height]) {
  const along = (near, far, at, size) =>
    side.includes(near) ? at : side.includes(far) ? at - size : at - size / 2;
  return [along("left", "right", x, width), along("top", "bottom", y, height)];
}

/** Where on a callout of that size and place its side's point is. */
export function anchorOf(side, [left, top], [width, height]) {
  const along = (near, far, at, size) =>
    side.includes(near) ? at : side.includes(far) ? at + size : at + size / 2;
  return [along("left", "right", left, width), along("top", "bottom", top, height)];
}
