/** A folder without a description, or with one that the page cannot show. */

import { html } from "./html.js";
import { Button } from "./fields.js";

export function Start({ state, actions }) {
  if (state.folder === null) return html`<main class="start"><p class="message" role="alert">${state.error}</p></main>`;
  if (state.unfit !== undefined) return html`<${Unfit} state=${state} actions=${actions} />`;
  return html`<main class="start">
    <h1>A new board</h1>
    <p>There is no <code>board.yaml</code> in <strong>${state.folder}</strong> yet. Choose the picture that it describes.</p>
    ${state.pictures.length > 0
      ? html`<ul class="pictures">${state.pictures.map((picture) => html`<li>
          <button type="button" onClick=${() => actions.begin(picture.name)}>
            <img src=${actions.pictureAddress(picture.name)} alt="" />
            <span>${picture.name}</span> <span class="hint">${picture.size.join(" × ")} pixels</span>
          </button></li>`)}</ul>`
      : html`<p class="hint">There is no PNG in the folder either.</p>`}
    <p><label class="drop">Drop a PNG here, or <input type="file" accept="image/png" onChange=${(event) => actions.takeFiles(event.target.files)} /></label></p>
    ${state.error && html`<p class="message" role="alert">${state.error}</p>`}
  </main>`;
}

function Unfit({ state, actions }) {
  return html`<main class="start">
    <h1>This board cannot be shown</h1>
    <p><strong>${state.folder}/board.yaml</strong>: ${state.unfit}</p>
    <ul class="messages">${state.problems.map(({ line, place, text }) => html`<li>Line ${line}${place && `, ${place}`}: ${text}</li>`)}</ul>
    <p><${Button} label="Look again" kind="primary" act=${actions.reload} /></p>
  </main>`;
}
