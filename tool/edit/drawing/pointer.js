/** What the pointer does on the picture: choosing, dragging, drawing. */

import { add, clamp, nearest } from "../geometry.js";
import { find, moveComponent, movePoint, pointOf, splitAfter, withComponent } from "../document.js";
import { addCorner, finishDraft } from "./draft.js";

/** In pixels of the screen: how near a corner has to be to draw a point to it, and how far the
 *  pointer has to go before it drags. */
const SNAP = 6;
const SLACK = 3;

export class Pointer {
  #drag = null;

  constructor(store, surface) {
    this.store = store;
    this.surface = surface;
    const { node } = surface.svg;
    // In the capture phase, before the picture is taken hold of to pan it.
    node.addEventListener("mousedown", (event) => this.#down(event), true);
    node.addEventListener("dblclick", (event) => this.#doubleClick(event));
    node.addEventListener("mousemove", (event) => this.#hover(event));
    document.addEventListener("mousemove", (event) => this.#move(event));
    document.addEventListener("mouseup", (event) => this.#up(event));
  }

  #down(event) {
    if (event.button !== 0) return;
    const { state } = this.store;
    const start = this.surface.at(event);
    this.surface.svg.node.focus({ preventScroll: true });
    if (state.draft) {
      this.#drag = { kind: "draft", start, event };
      event.stopPropagation();
      return;
    }
    const drag = this.#hit(event.target, start);
    if (!drag) return;
    event.stopPropagation();
    event.preventDefault();
    this.#drag = { ...drag, start, event, before: this.store.state.document, moved: false };
  }

  /** What lies under the pointer, as a drag that may begin there. */
  #hit(target, start) {
    const { state } = this.store;
    const { line, index, edge, side } = target.dataset;
    if (side !== undefined) {
      this.#changeSelected(`Callout's side ${side}`, (component) => ({ ...component, callout: side }));
      return { kind: "none" };
    }
    if (line !== undefined) {
      const handle = { line, index: Number(index) };
      if (edge !== undefined) return { kind: "edge", handle };
      this.store.set({ handle });
      return { kind: "handle", handle };
    }
    const id = target.closest(".component")?.dataset.id;
    if (id === undefined) return null;
    this.store.set({ selected: id, handle: id === state.selected ? state.handle : null });
    const component = find(state.document, id);
    if (target.classList.contains("marker")) return { kind: "handle", handle: { line: "marker", index: 0 } };
    const onCallout = target.classList.contains("callout") && component.leader.length > 0;
    const last = { line: "leader", index: component.leader.length - 1 };
    return onCallout ? { kind: "handle", handle: last, snap: false } : { kind: "whole" };
  }

  #changeSelected(what, change, options) {
    const { document, selected } = this.store.state;
    this.store.change(withComponent(document, selected, change), what, options);
  }

  #hover(event) {
    const { state } = this.store;
    if (state.draft && !this.#drag) {
      this.store.set({ draft: { ...state.draft, at: this.#snapped(this.surface.at(event), event) } });
      return;
    }
    const id = event.target.closest(".component")?.dataset.id ?? null;
    if (!this.#drag && state.hovered !== id) this.store.set({ hovered: id });
  }

  #move(event) {
    const drag = this.#drag;
    if (!drag) return;
    const far = Math.hypot(event.clientX - drag.event.clientX, event.clientY - drag.event.clientY);
    if (!drag.moved && far < SLACK) return;
    if (!drag.moved && drag.kind === "edge") this.#split(drag);
    if (!drag.moved) this.store.set({ dragging: true });
    drag.moved = true;
    const at = this.surface.at(event);
    if (drag.kind === "whole") this.#dragWhole(drag, at);
    else if (drag.kind === "handle") this.#dragHandle(drag, at, event);
    else if (drag.kind === "draft") {
      const { draft } = this.store.state;
      if (!draft.points.length) this.store.set({ draft: { ...draft, box: [drag.start, at] } });
    }
  }

  #split(drag) {
    const { limits } = this.store.state;
    const limit = drag.handle.line === "outline" ? limits.VERTICES_MAX : limits.LEADER_POINTS_MAX;
    drag.kind = "handle";
    drag.series = `split ${performance.now()}`;
    this.#changeSelected("Edge split", (one) => splitAfter(one, drag.handle, limit), {
      series: drag.series,
    });
    drag.before = this.store.state.document;
    drag.handle = { ...drag.handle, index: drag.handle.index + 1 };
    this.store.set({ handle: drag.handle });
  }

  #dragWhole(drag, at) {
    const { selected, size } = this.store.state;
    const way = [at[0] - drag.start[0], at[1] - drag.start[1]];
    const document = withComponent(drag.before, selected, (one) => moveComponent(one, way, size));
    this.#dragTo(drag, document, "Component moved");
  }

  #dragHandle(drag, at, event) {
    const { selected, size } = this.store.state;
    const from = pointOf(find(drag.before, selected), drag.handle);
    const way = [at[0] - drag.start[0], at[1] - drag.start[1]];
    const free = add(from, way);
    const snaps = drag.snap !== false && drag.handle.line === "outline";
    const point = clamp(snaps ? this.#snapped(free, event, drag.handle) : free, size);
    const document = withComponent(drag.before, selected, (one) => movePoint(one, drag.handle, point));
    this.#dragTo(drag, document, `${{ outline: "Corner", leader: "Leader", marker: "Dot" }[drag.handle.line]} moved`);
  }

  #dragTo(drag, document, what) {
    drag.series ??= `drag ${performance.now()}`;
    this.store.change(document, what, { series: drag.series });
  }

  /** A point, or the corner beside it; Alt lets it stay where it is. */
  #snapped(point, event, own = null) {
    const { document, selected, size } = this.store.state;
    const whole = clamp(point, size);
    if (event.altKey) return whole;
    const corners = document.components.flatMap(({ id, outline }) =>
      id === selected && own ? outline.filter((_, i) => i !== own.index) : outline,
    );
    return nearest(corners, point, SNAP * this.surface.pixel) ?? whole;
  }

  #up(event) {
    const drag = this.#drag;
    this.#drag = null;
    if (!drag) return;
    this.store.close();
    if (drag.moved) this.store.set({ dragging: false });
    if (drag.kind !== "draft") return;
    const { draft } = this.store.state;
    const at = this.#snapped(this.surface.at(event), event);
    if (draft.box) finishDraft(this.store, [this.#snapped(drag.start, drag.event), at]);
    else addCorner(this.store, at, SNAP * this.surface.pixel);
  }

  #doubleClick(event) {
    if (this.store.state.draft) finishDraft(this.store);
  }
}
