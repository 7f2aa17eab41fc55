/** The coordinates of a component as numbers. */

import { movePoint, pointsOf } from "../document.js";
import { clamp } from "../geometry.js";
import { html } from "./html.js";
import { problemsFor } from "./fields.js";

const LINES = { outline: "Outline", leader: "Leader line", marker: "Dot" };

export function Points({ component, problems, state, store }) {
  return html`${Object.entries(LINES).map(([line, title]) => html`<fieldset class="points">
    <legend>${title}</legend>
    ${problemsFor(problems, line).map((one) => html`<p class=${`message ${one.severity ?? ""}`}>${one.text}</p>`)}
    <ol>${pointsOf(component, line).map((point, index) => html`<${Point}
      ...${{ component, state, store, point, handle: { line, index }, title }} />`)}</ol>
  </fieldset>`)}`;
}

function Point({ component, state, store, point, handle, title }) {
  const change = (axis, text) => {
    const value = Number.parseInt(text, 10);
    if (Number.isNaN(value)) return;
    const moved = clamp(point.map((old, i) => (i === axis ? value : old)), state.size);
    const components = state.document.components.map((one) =>
      one.id === component.id ? movePoint(one, handle, moved) : one,
    );
    store.change({ ...state.document, components }, "Point moved", { handle });
  };
  return html`<li>${["x", "y"].map((axis, i) => html`<input type="number" min="0"
    max=${state.size[i] - 1} value=${point[i]} aria-label=${`${title} ${handle.index + 1} ${axis}`}
    onFocus=${() => store.set({ handle })} onChange=${(event) => change(i, event.target.value)} />`)}</li>`;
}
