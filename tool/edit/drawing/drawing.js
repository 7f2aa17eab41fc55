/** The picture as a whole: puts its parts together, and keeps them up with the state. */

import { pictureAddress } from "../api.js";
import { Draft, startDraft } from "./draft.js";
import { Handles } from "./handles.js";
import { pictureKey } from "./keys.js";
import { Pointer } from "./pointer.js";
import { Shapes } from "./shapes.js";
import { Surface } from "./surface.js";

export class Drawing {
  constructor(parent, store) {
    this.store = store;
    this.surface = new Surface(parent);
    this.shapes = new Shapes(this.surface.components);
    this.handles = new Handles(this.surface.handles);
    this.draft = new Draft(this.surface.draft);
    this.pointer = new Pointer(store, this.surface);
    const { node } = this.surface.svg;
    node.addEventListener("keydown", (event) => {
      if (!pictureKey(event, store, this.surface)) return;
      event.preventDefault();
      event.stopPropagation();
    });
    this.stop = store.subscribe((state) => this.update(state));
    this.update(store.state);
  }

  update(state) {
    const hasFocus = this.surface.svg.node.contains(document.activeElement);
    const shown = `${state.document.picture} ${state.size}`;
    if (shown !== this.shown) {
      this.shown = shown;
      this.surface.show(`./${pictureAddress(state.document.picture)}`, state.size);
    }
    this.shapes.update(state);
    this.handles.update(state);
    this.draft.update(state);
    this.surface.svg.node.classList.toggle("drawing-now", Boolean(state.draft));
    if (hasFocus) this.#keepFocus(state);
  }

  /** The focus follows the handle that keys go to; the one before may be gone. */
  #keepFocus({ handle, draft }) {
    const { node } = this.surface.svg;
    const target = (handle && !draft && this.handles.nodeOf(handle)) || node;
    if (target !== document.activeElement) target.focus({ preventScroll: true });
  }

  /** Begins to draw, with the cross in the middle of what is seen. */
  drawNew() {
    const { x, y, width, height } = this.surface.svg.viewbox();
    const middle = [x + width / 2, y + height / 2].map(Math.round);
    startDraft(this.store, middle);
    this.focus();
  }

  focus() {
    this.surface.svg.node.focus({ preventScroll: true });
  }
}
