/** An outline that is being drawn, corner by corner or as a rectangle. */

import { distance, rectangle } from "../geometry.js";
import { freshId } from "../document.js";
import { proposeComponent } from "../proposals.js";

const SMALLEST = 3;

/** Begins a new component; the cross stands in the middle of what is seen. */
export function startDraft(store, at) {
  store.set({ draft: { points: [], at, box: null }, handle: null, said: "Drawing: set the corners" });
}

export function cancelDraft(store) {
  store.set({ draft: null, said: "Drawing given up" });
}

/** Sets a corner; the first one again, or the last one that fits, closes the outline. */
export function addCorner(store, point, reach = 0) {
  const { draft, limits } = store.state;
  const { points } = draft;
  if (points.length >= SMALLEST && distance(points[0], point) <= reach) return finishDraft(store);
  if (points.length && distance(points.at(-1), point) === 0) return undefined;
  const more = [...points, point];
  store.set({ draft: { ...draft, points: more, at: point }, said: `Corner ${more.length} at ${point}` });
  return more.length >= limits.VERTICES_MAX ? finishDraft(store) : undefined;
}

export function takeBackCorner(store) {
  const { draft } = store.state;
  store.set({ draft: { ...draft, points: draft.points.slice(0, -1) }, said: "Corner taken back" });
}

/** Makes a component of the corners so far, or of a rectangle's two. */
export function finishDraft(store, box = null) {
  const { draft, document, size } = store.state;
  const outline = box ? rectangle(...box) : draft.points;
  const columns = new Set(outline.map(([x]) => x));
  const rows = new Set(outline.map(([, y]) => y));
  if (outline.length < SMALLEST || columns.size < 2 || rows.size < 2) {
    store.set({ draft: { ...draft, box: null }, said: "An outline needs three corners and an area" });
    return;
  }
  const component = { id: freshId(), ...proposeComponent(document, outline, size) };
  store.change({ ...document, components: [...document.components, component] }, "Component drawn", {
    draft: null,
    selected: component.id,
    handle: null,
    fresh: component.id,
    said: `${component.name} drawn, with ${outline.length} corners`,
  });
}

/** Shows the draft. */
export class Draft {
  constructor(layer) {
    this.fill = layer.polygon().addClass("outline");
    this.line = layer.polyline().addClass("line");
    this.corners = layer.group();
    this.cross = layer.path().addClass("cross");
    this.layer = layer;
  }

  update({ draft, size }) {
    if (draft === this.drawn) return;
    this.drawn = draft;
    this.layer.node.classList.toggle("shown", Boolean(draft));
    if (!draft) return;
    const points = draft.box ? rectangle(...draft.box) : draft.points;
    this.fill.attr("points", [...points, ...(draft.box ? [] : [draft.at])].join(" "));
    this.line.attr("points", (draft.box ? points : [...points, draft.at]).join(" "));
    this.corners.clear();
    for (const [x, y] of points) this.corners.circle().addClass("handle outline").attr({ cx: x, cy: y });
    const [x, y] = draft.at;
    this.layer.node.dataset.at = draft.at;
    this.cross.attr("d", `M0 ${y}H${size[0]}M${x} 0V${size[1]}`);
  }
}
