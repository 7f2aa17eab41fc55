/** What can be taken hold of: the points of the selected component, and the sides of its callout. */

import { anchorOf, middle, placeCallout } from "../geometry.js";
import { pointsOf } from "../document.js";
import { calloutSize } from "./shapes.js";

const NAMES = { outline: "Corner", leader: "Leader point", marker: "Dot" };

export const handleName = (component, { line, index }) => {
  const points = pointsOf(component, line);
  const place = line === "marker" ? "" : ` ${index + 1} of ${points.length}`;
  return `${NAMES[line]}${place}, ${points[index].join(", ")}`;
};

export class Handles {
  #layer;
  #nodes = new Map();
  #drawn = {};

  constructor(layer) {
    this.#layer = layer;
  }

  update(state) {
    const component = state.document.components.find(({ id }) => id === state.selected);
    const { handle, measures } = state;
    const now = { component, handle, measures, draft: state.draft };
    if (Object.keys(now).every((key) => now[key] === this.#drawn[key])) return;
    this.#drawn = now;
    const wanted = component && !state.draft ? wantedHandles(component, state) : [];
    const keys = new Set(wanted.map(({ key }) => key));
    for (const [key, node] of this.#nodes) {
      if (!keys.has(key)) {
        node.remove();
        this.#nodes.delete(key);
      }
    }
    for (const one of wanted) this.#place(one, component, handle);
  }

  /** The element of a handle, to put the focus on. */
  nodeOf({ line, index }) {
    return this.#nodes.get(`${line} ${index}`)?.node;
  }

  #place({ key, kind, point, data, label }, component, active) {
    let node = this.#nodes.get(key);
    if (!node) {
      node = this.#layer.circle().addClass(`handle ${kind}`);
      Object.assign(node.node.dataset, data);
      this.#nodes.set(key, node);
    }
    node.attr({ cx: point[0], cy: point[1], "aria-label": label, role: label && "button" });
    if (kind === "edge") return;
    const isActive = active && data.line === active.line && Number(data.index) === active.index;
    node.attr("tabindex", isActive ? 0 : -1);
    node.node.classList.toggle("active", Boolean(isActive));
    node.node.setAttribute("aria-pressed", String(data.side === component.callout || isActive));
  }
}

function wantedHandles(component, state) {
  const { limits } = state;
  const wanted = [
    ...edges(component, "outline", limits.VERTICES_MAX, true),
    ...edges(component, "leader", limits.LEADER_POINTS_MAX, false),
    ...sides(component, calloutSize(component, state)),
  ];
  for (const line of ["leader", "outline", "marker"]) {
    pointsOf(component, line).forEach((point, index) => {
      const label = handleName(component, { line, index });
      wanted.push({ key: `${line} ${index}`, kind: line, point, label, data: { line, index } });
    });
  }
  return wanted;
}

/** The middles of edges, which become corners when they are dragged. */
function edges(component, line, limit, closed) {
  const points = component[line];
  if (points.length >= limit) return [];
  const last = closed ? points.length : points.length - 1;
  return points.slice(0, last).map((point, index) => ({
    key: `edge ${line} ${index}`,
    kind: "edge",
    point: middle(point, points[(index + 1) % points.length]),
    data: { line, index, edge: "" },
  }));
}

const SIDES = ["top-left", "top", "top-right", "right", "bottom-right", "bottom", "bottom-left", "left"];

/** The eight points of the callout that its leader line can end at. */
function sides(component, size) {
  const anchor = component.leader.at(-1);
  if (!anchor) return [];
  const place = placeCallout(component.callout, anchor, size);
  return SIDES.map((side) => ({
    key: `side ${side}`,
    kind: side === component.callout ? "side chosen" : "side",
    point: anchorOf(side, place, size),
    label: `Leader line ends at the callout's ${side}`,
    data: { side },
  })).filter(({ data }) => data.side !== component.callout);
}
