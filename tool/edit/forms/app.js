/** The page: bar, list, picture, view and form. */

import { useEffect, useRef, useState } from "preact/hooks";
import { Drawing } from "../drawing/drawing.js";
import { BoardForm } from "./board.js";
import { ComponentForm } from "./component.js";
import { DIALOGS } from "./dialogs.js";
import { Button } from "./fields.js";
import { html } from "./html.js";
import { ComponentList } from "./list.js";
import { Start } from "./start.js";
import { LiveView } from "./view.js";

export function App({ store, actions }) {
  const state = useStore(store);
  if (!state.document) return html`<${Start} state=${state} actions=${actions} />`;
  const Opened = state.dialog && DIALOGS[state.dialog.kind];
  const close = () => store.set({ dialog: null });
  return html`
    <${Bar} ...${{ state, store, actions }} />
    <main class=${state.largeView ? "work large-view" : "work"}>
      <${ComponentList} ...${{ state, store, actions }} />
      <${Picture} ...${{ state, store, actions }} />
      <aside class="details" aria-label="View and fields">
        <${LiveView} ...${{ state, store, actions }} />
        <${Tabs} ...${{ state, store }} />
        <div class="panel" role="tabpanel" aria-labelledby=${`tab-${state.tab}`}>${state.tab === "board"
          ? html`<${BoardForm} ...${{ state, store, actions }} />`
          : html`<${ComponentForm} ...${{ state, store, actions }} />`}</div>
      </aside>
    </main>
    <${Foot} state=${state} actions=${actions} />
    ${Opened && html`<${Opened} ...${{ state, store, actions, close }} />`}`;
}

/** Milliseconds for which lists and forms stay behind a drag: each frame belongs to the picture. */
const BEHIND = 120;

/** The state, at most once for each frame, and less often during a drag. */
function useStore(store) {
  const [state, setState] = useState(store.state);
  useEffect(() => {
    let waiting = false;
    const show = () => {
      waiting = false;
      setState(store.state);
    };
    return store.subscribe(({ dragging }) => {
      if (waiting) return;
      waiting = true;
      if (dragging) setTimeout(show, BEHIND);
      else requestAnimationFrame(show);
    });
  }, []);
  return state;
}

function Bar({ state, store, actions }) {
  const saved = state.document === state.saved;
  return html`<header class="bar">
    <h1><span class="folder">${state.folder}</span><span class="title">${state.document.board ?? ""}</span></h1>
    <div class="tools" role="toolbar" aria-label="Editing">
      <${Button} label="Draw a component" keys="N" kind=${state.draft ? "chosen" : ""} act=${actions.draw}>Draw</${Button}>
      <${Button} label=${`Undo ${store.lastStep}`} keys="Ctrl+Z" disabled=${!store.canUndo} act=${() => store.undo()}>Undo</${Button}>
      <${Button} label="Redo" keys="Ctrl+Y" disabled=${!store.canRedo} act=${() => store.redo()} />
      <${Button} label="Align callouts in columns" act=${actions.align}>Align callouts</${Button}>
      <${Button} label="Keys" keys="?" act=${() => store.set({ dialog: { kind: "help" } })} />
    </div>
    <p class="saved" role="status">${state.saving ? "Saving …" : saved ? "Saved" : "Not saved"}</p>
    <${Button} label="Save" keys="Ctrl+S" kind="primary" disabled=${state.saving || (saved && state.base.onDisk)} act=${() => actions.save()} />
  </header>`;
}

function Picture({ state, store, actions }) {
  const place = useRef(null);
  useEffect(() => {
    actions.drawing = new Drawing(place.current, store);
  }, []);
  return html`<section class="picture" aria-label="Picture">
    <div class="surface" ref=${place}></div>
    <div class="zoom" role="toolbar" aria-label="Zoom">
      <${Button} label="Zoom in" keys="+" kind="icon" act=${() => actions.drawing.surface.zoomBy(1)}>+</${Button}>
      <${Button} label="Zoom out" keys="-" kind="icon" act=${() => actions.drawing.surface.zoomBy(-1)}>−</${Button}>
      <${Button} label="Show all" keys="0" kind="icon" act=${() => actions.drawing.surface.fit()}>⤢</${Button}>
    </div>
    ${state.draft && html`<p class="advice">Click corner after corner, or drag a rectangle. The first corner, a double click or Enter ends it; Esc gives up.</p>`}
  </section>`;
}

function Tabs({ state, store }) {
  const tabs = { component: "Component", board: "Board" };
  const other = state.tab === "board" ? "component" : "board";
  const onKey = (event) => {
    if (!["ArrowLeft", "ArrowRight"].includes(event.key)) return;
    store.set({ tab: other });
    event.currentTarget.querySelector(`#tab-${other}`).focus();
  };
  const faults = state.problems.filter(({ component }) => component === null).length;
  return html`<div class="tabs" role="tablist" onKeyDown=${onKey}>
    ${Object.entries(tabs).map(([tab, title]) => html`<button type="button" role="tab" id=${`tab-${tab}`}
      aria-selected=${tab === state.tab} tabindex=${tab === state.tab ? 0 : -1}
      onClick=${() => store.set({ tab })}>${title}${tab === "board" && faults > 0 ? html` <span class="fault">${faults}</span>` : null}</button>`)}
  </div>`;
}

function Foot({ state, actions }) {
  const errors = state.problems.filter(({ severity }) => severity !== "warning");
  const text = state.problems.length === 0 ? "Nothing to complain about" : `${state.problems.length} to look at`;
  return html`<footer class="foot">
    <details class="problems"><summary class=${errors.length ? "error" : ""}>${text}</summary>
      <ul>${state.problems.map((one) => html`<li class=${one.severity}><button type="button" class="link"
        onClick=${() => actions.showProblem(one)}>${one.place || "board.yaml"}: ${one.text}</button></li>`)}</ul>
    </details>
    ${state.error && html`<p class="message" role="alert">${state.error}</p>`}
    <p class="said" role="status" aria-live="polite">${state.said}</p>
  </footer>`;
}
