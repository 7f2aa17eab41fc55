/** The real view beside the drawing. */

import { html } from "./html.js";
import { Button } from "./fields.js";

export const RESOLUTIONS = ["1024x768", "1920x1080", "3840x2160"];

export function LiveView({ state, store, actions }) {
  const { live, resolution } = state;
  return html`<section class="view" aria-label="The view">
    <div class="tools">
      <h2>View</h2>
      <select aria-label="Resolution of the view" onChange=${(event) => actions.setResolution(event.target.value)}>
        ${RESOLUTIONS.map((one) => html`<option value=${one} selected=${one === resolution}>${one.replace("x", " × ")}</option>`)}
      </select>
      <${Button} label=${state.largeView ? "Small" : "Large"} aria-pressed=${state.largeView}
        act=${() => store.set({ largeView: !state.largeView })} />
    </div>
    <div class="screen" aria-busy=${live.busy}>
      ${live.address && html`<img src=${live.address} alt=${describe(state)} />`}
      ${live.busy && !live.address && html`<p class="hint">The view is coming. The first time, it is built, which takes some minutes.</p>`}
      ${live.error && html`<p class="hint">${live.error}</p>`}
    </div>
  </section>`;
}

function describe({ document, selected, resolution }) {
  const shown = document.components.find(({ id }) => id === selected);
  const which = shown ? `, with the panel of ${shown.name}` : "";
  return `The view at ${resolution.replace("x", " by ")}: ${document.components.length} components${which}`;
}
