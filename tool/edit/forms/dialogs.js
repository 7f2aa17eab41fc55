/** What the page asks in a window of its own. */

import { useEffect, useRef, useState } from "preact/hooks";
import { repeat } from "../copies.js";
import { find, rescale } from "../document.js";
import { html } from "./html.js";
import { Button } from "./fields.js";

/** A window that keeps the focus until it is closed. */
function Dialog({ title, close, children, wide = false }) {
  const element = useRef(null);
  useEffect(() => {
    const before = document.activeElement;
    element.current.showModal();
    return () => before?.focus?.();
  }, []);
  return html`<dialog ref=${element} class=${wide ? "wide" : ""} aria-labelledby="dialog-title" onClose=${close}>
    <h2 id="dialog-title">${title}</h2>
    ${children}
  </dialog>`;
}

function NumberField({ id, label, value, change, min, max }) {
  return html`<div class="field"><label for=${id}>${label}</label>
    <input id=${id} type="number" min=${min} max=${max} value=${value} onInput=${(event) => change(Number(event.target.value))} /></div>`;
}

function Decision({ label, act, close, disabled }) {
  return html`<div class="decision">
    <${Button} label="Cancel" act=${close} />
    <button class="primary" type="submit" disabled=${disabled}>${label}</button>
  </div>`;
}

const submit = (act) => (event) => {
  event.preventDefault();
  act();
};

/** A row of parts is one part and a number. */
export function CopiesDialog({ state, store, close }) {
  const component = find(state.document, state.selected);
  const columns = component.outline.map(([x]) => x);
  const [count, setCount] = useState(1);
  const [dx, setDx] = useState(Math.max(...columns) - Math.min(...columns) + 10);
  const [dy, setDy] = useState(0);
  const room = state.limits.COMPONENTS - state.document.components.length;
  const act = () => {
    const [document, copies] = repeat(state.document, component.id, count, [dx, dy], state.size);
    store.change(document, `Copies of ${component.name}`, {
      selected: copies.at(-1).id, handle: null, dialog: null,
      said: `${copies.map(({ name }) => name).join(", ")} added`,
    });
  };
  return html`<${Dialog} title=${`Copies of ${component.name}`} close=${close}><form onSubmit=${submit(act)}>
    <p class="hint">A row of parts is one part and a number: names count up, and each copy stands farther by the same way.</p>
    <div class="row">
      <${NumberField} id="copies-count" label="Copies" value=${count} min="1" max=${room} change=${setCount} />
      <${NumberField} id="copies-dx" label="To the right" value=${dx} min=${-state.size[0]} max=${state.size[0]} change=${setDx} />
      <${NumberField} id="copies-dy" label="Down" value=${dy} min=${-state.size[1]} max=${state.size[1]} change=${setDy} />
    </div>
    <${Decision} label="Add copies" close=${close} disabled=${!(count >= 1 && count <= room)} />
  </form></${Dialog}>`;
}

/** All coordinates for a picture of another size. */
export function RescaleDialog({ state, store, close }) {
  const { from, picture } = state.dialog;
  const [width, setWidth] = useState(from[0]);
  const [height, setHeight] = useState(from[1]);
  const changed = picture && picture !== state.document.picture;
  const to = state.dialog.to ?? state.size;
  const take = (document) =>
    store.change(document, "Picture and coordinates", { dialog: null, said: "Coordinates rescaled" });
  const other = changed ? { ...state.document, picture } : state.document;
  return html`<${Dialog} title="Rescale coordinates" close=${close}>
    <form onSubmit=${submit(() => take(rescale(other, [width, height], to)))}>
    <p>The picture has ${to.join(" × ")} pixels. For which size were the coordinates made?</p>
    <div class="row">
      <${NumberField} id="rescale-width" label="Width" value=${width} min="1" max="4095" change=${setWidth} />
      <${NumberField} id="rescale-height" label="Height" value=${height} min="1" max="4095" change=${setHeight} />
    </div>
    ${changed && html`<p><${Button} label="Change the picture, leave coordinates as they are" kind="link" act=${() => take(other)} /></p>`}
    <${Decision} label="Rescale" close=${close} disabled=${!(width > 0 && height > 0)} />
  </form></${Dialog}>`;
}

/** What is on the disk, and what would be written. */
export function ConflictDialog({ state, close, actions }) {
  const { disk, mine, seen } = state.dialog;
  return html`<${Dialog} title="The file was changed on the disk" close=${close} wide=${true}>
    <p>Something else has written <code>board.yaml</code> since it was loaded here. Nothing is overwritten unless you say so.</p>
    <div class="texts"><section><h3>On the disk</h3><pre tabindex="0">${different(disk, mine)}</pre></section>
      <section><h3>Here</h3><pre tabindex="0">${different(mine, disk)}</pre></section></div>
    <div class="decision">
      <${Button} label="Go on editing" act=${close} />
      <${Button} label="Take what is on the disk" act=${actions.reload} />
      <${Button} label="Overwrite it with what is here" kind="danger" act=${() => actions.save(seen)} />
    </div>
  </${Dialog}>`;
}

/** Lines, with those marked that the other text has not. */
function different(text, other) {
  const there = new Set((other ?? "").split("\n"));
  return (text ?? "").split("\n").map((line) =>
    there.has(line) ? `${line}\n` : html`<mark>${line}${"\n"}</mark>`,
  );
}

const KEYS = [
  ["N", "draw a component"], ["Space", "set a corner at the cross (drawing)"],
  ["Enter", "the same; once more at the same place ends the outline"],
  ["Backspace", "take the last corner back (drawing)"], ["Esc", "give up drawing; leave the point, then the component"],
  ["Arrows", "move the cross, the point or the component by one pixel; with Shift by ten"],
  ["Page Down, Page Up", "next and previous point of the component"],
  ["Insert or I", "split the edge behind the point"], ["Delete", "delete the point, or the component"],
  ["Ctrl+D", "copies of the component"], ["Alt+Up, Alt+Down", "in the list: change the order"],
  ["+  −  0", "zoom in, zoom out, show all"], ["Ctrl+Z, Ctrl+Y", "undo, redo"], ["Ctrl+S", "save"],
  ["Alt while dragging", "do not snap to a corner nearby"],
];

export function HelpDialog({ close }) {
  return html`<${Dialog} title="Keys" close=${close}>
    <dl class="keys">${KEYS.map(([key, what]) => html`<div><dt><kbd>${key}</kbd></dt><dd>${what}</dd></div>`)}</dl>
    <div class="decision"><${Button} label="Close" kind="primary" act=${close} /></div>
  </${Dialog}>`;
}

export const DIALOGS = {
  copies: CopiesDialog, rescale: RescaleDialog, conflict: ConflictDialog, help: HelpDialog,
};
