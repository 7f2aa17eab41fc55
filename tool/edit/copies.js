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
  const copies = [];
  let result = document;
  let last = document.components[place];
  for (let i = 0; i < count; i++) {
    const moved = moveComponent(last, offset, size);
    last = { ...moved, id: freshId(), name: nextName(last.name, names) };
    const copy = { ...last, ...freeCallout(result, last, size) };
    names.add(copy.name);
    copies.push(copy);
    const components = insertAt(result.components, place + 1 + i, copy);
    result = { ...result, components };
  }
  return [result, copies];
}

function freeCallout(document, { leader, marker, callout }, size) {
  if (!leader.length || isFree(document, leader.at(-1), size)) return {};
  const side = callout === "left" || callout === "right" ? callout : undefined;
  return proposeCallout(document, marker, size, side);
}
