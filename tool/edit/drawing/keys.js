/** What keys do while the picture has the focus. Help in the page names all of them. */

import {
  deletePoint, find, moveComponent, movePoint, pointOf, pointsOf, removeComponent, splitAfter, withComponent,
} from "../document.js";
import { add, clamp } from "../geometry.js";
import { addCorner, cancelDraft, finishDraft, takeBackCorner } from "./draft.js";
import { handleName } from "./handles.js";

const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };
const FAST = 10;
const LINES = ["outline", "leader", "marker"];

/** The least number of points of a line, as the tool's own limits have it. */
const least = (line, limits) => (line === "outline" ? limits.VERTICES_MIN : 1);
const most = (line, limits) => (line === "outline" ? limits.VERTICES_MAX : limits.LEADER_POINTS_MAX);

/** Handles a key on the picture; whether it meant something. */
export function pictureKey(event, store, surface) {
  if (event.ctrlKey || event.metaKey) return false;
  const act = store.state.draft ? DRAFT_KEYS[event.key] : COMPONENT_KEYS[event.key];
  const arrow = ARROWS[event.key];
  if (arrow) {
    const step = event.shiftKey ? FAST : 1;
    moveBy(store, surface, arrow.map((way) => way * step));
  } else if (act) act(store, surface);
  else if (!zoomKey(event.key, store, surface)) return false;
  return true;
}

function zoomKey(key, store, surface) {
  const at = whereKeysAct(store.state);
  if (key === "0") surface.fit();
  else if (key === "+" || key === "=") surface.zoomBy(1, at);
  else if (key === "-") surface.zoomBy(-1, at);
  else return false;
  return true;
}

function whereKeysAct({ document, draft, handle, selected }) {
  const component = find(document, selected);
  if (draft) return draft.at;
  return component && (handle ? pointOf(component, handle) : component.marker);
}

const DRAFT_KEYS = {
  " ": (store) => addCorner(store, store.state.draft.at),
  Enter: (store) => {
    const { points, at } = store.state.draft;
    const last = points.at(-1);
    if (last && last[0] === at[0] && last[1] === at[1]) finishDraft(store);
    else addCorner(store, at);
  },
  Backspace: takeBackCorner,
  Escape: cancelDraft,
};

const COMPONENT_KEYS = {
  PageDown: (store, surface) => nextHandle(store, surface, 1),
  PageUp: (store, surface) => nextHandle(store, surface, -1),
  Insert: split,
  i: split,
  Delete: remove,
  Backspace: remove,
  Escape: (store) => {
    if (store.state.handle) store.set({ handle: null, said: "The whole component" });
    else store.set({ selected: null, said: "Nothing chosen" });
  },
};

function moveBy(store, surface, way) {
  const { draft, document, handle, selected, size } = store.state;
  if (draft) {
    const at = clamp(add(draft.at, way), size);
    store.set({ draft: { ...draft, at }, said: at.join(", ") });
    surface.reveal(at);
    return;
  }
  const component = find(document, selected);
  if (!component) return;
  const changed = handle
    ? movePoint(component, handle, clamp(add(pointOf(component, handle), way), size))
    : moveComponent(component, way, size);
  const said = handle ? handleName(changed, handle) : `${component.name} at ${changed.marker.join(", ")}`;
  const moved = withComponent(document, selected, () => changed);
  store.change(moved, handle ? "Point moved" : "Component moved", { said });
  surface.reveal(handle ? pointOf(changed, handle) : changed.marker);
}

/** Goes on to the next point: along the outline, the leader line, to the dot, and round again. */
function nextHandle(store, surface, step) {
  const { document, handle, selected } = store.state;
  const component = find(document, selected);
  if (!component) return;
  const all = LINES.flatMap((line) => pointsOf(component, line).map((_, index) => ({ line, index })));
  const at = all.findIndex(({ line, index }) => line === handle?.line && index === handle?.index);
  const next = all[at < 0 ? (step > 0 ? 0 : all.length - 1) : (at + step + all.length) % all.length];
  store.set({ handle: next, said: handleName(component, next) });
  surface.reveal(pointOf(component, next));
}

function split(store) {
  const { document, handle, limits, selected } = store.state;
  const component = find(document, selected);
  if (!component || !handle) return;
  const changed = splitAfter(component, handle, most(handle.line, limits));
  if (changed === component) {
    const text = handle.line === "marker" ? "A dot has no edge" : "There is no room for more points";
    store.set({ said: text });
    return;
  }
  const index = Math.min(handle.index + 1, changed[handle.line].length - 1);
  const next = { ...handle, index };
  store.change(withComponent(document, selected, () => changed), "Edge split", {
    handle: next,
    said: handleName(changed, next),
  });
}

export function remove(store) {
  const { document, handle, limits, selected } = store.state;
  const component = find(document, selected);
  if (!component) return;
  if (!handle) {
    const place = document.components.indexOf(component);
    const rest = removeComponent(document, selected);
    const next = rest.components[Math.min(place, rest.components.length - 1)]?.id ?? null;
    store.change(rest, `${component.name} deleted`, { selected: next, said: `${component.name} deleted` });
    return;
  }
  const changed = deletePoint(component, handle, least(handle.line, limits));
  if (changed === component) {
    store.set({ said: "This point has to stay" });
    return;
  }
  const next = { ...handle, index: Math.min(handle.index, changed[handle.line].length - 1) };
  store.change(withComponent(document, selected, () => changed), "Point deleted", { handle: next });
}
