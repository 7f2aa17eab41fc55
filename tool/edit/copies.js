/** A row of parts is one part and a number. */

import { freshId, insertAt, moveComponent, nextName } from "./document.js";
import { isFree, proposeCallout } from "./proposals.js";

/**
 * The document with copies of a component behind it, each farther by `offset` and with the next
 * number as its name, and the copies. Their callouts move with them, unless they would then stand
 * upon others.
 */
export function repeat(document, id, count, offset, size) {
  const place = document.components.findIndex((component) => component.id === id);
  const names = new Set(document.components.map((component) => component.name));
  const way = Math.sign(offset[1]) || 1;
  const copies = [];
  let result = document;
  let last = document.components[place];
  let crowded = false;
  for (let i = 0; i < count; i++) {
    const moved = moveComponent(last, offset, size);
    last = { ...moved, id: freshId(), name: nextName(last.name, names) };
    // From the first one on that finds no room, so that their callouts stand in one order.
    crowded ||= last.leader.length > 0 && !isFree(result, last.leader.at(-1), size);
    const copy = crowded ? { ...last, ...elsewhere(result, last, size, way) } : last;
    names.add(copy.name);
    copies.push(copy);
    const components = insertAt(result.components, place + 1 + i, copy);
    result = { ...result, components };
  }
  return [result, copies];
}

function elsewhere(document, { marker, callout }, size, way) {
  const side = callout === "left" || callout === "right" ? callout : undefined;
  return proposeCallout(document, marker, size, side, way);
}
