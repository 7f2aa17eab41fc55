/** The form of the chosen component. */

import { useEffect, useRef, useState } from "preact/hooks";
import { find, setField, withComponent } from "../document.js";
import { html } from "./html.js";
import { Button, CheckField, ChoiceField, Section, TextField, problemsFor } from "./fields.js";
import { Hardware } from "./hardware.js";
import { InfoLines } from "./info.js";
import { Points } from "./points.js";

/** What a field says when the description does not name it. */
const DEFAULTS = {
  align: "center", token: 0, selectable: true, special_group: false, status: "available",
};

const POINTS = ["outline", "leader", "marker"];

export function ComponentForm({ state, store, actions }) {
  const component = find(state.document, state.selected);
  const name = useRef(null);
  useEffect(() => {
    if (state.fresh !== state.selected || !name.current) return;
    store.set({ fresh: null });
    const field = name.current.querySelector("input");
    field.focus();
    field.select();
  }, [state.fresh, state.selected]);
  if (!component) return html`<${Nothing} state=${state} actions=${actions} />`;

  const place = state.document.components.indexOf(component);
  const problems = state.problems.filter((one) => one.component === place);
  const set = (field, value, series = null) => {
    const wanted = value === DEFAULTS[field] && !(field in component) ? undefined : value;
    const change = (one) => setField(one, field, wanted);
    store.change(withComponent(state.document, component.id, change), `${field} of ${component.name}`, {
      series: series && `${component.id} ${field}`,
    });
  };
  const text = (field) => (value, done) => (done ? store.close() : set(field, value, true));
  const shared = { problems, component, state, store, set };
  const general = problems.filter(({ field }) => field === "" );
  return html`<form class="component" aria-label=${`Component ${component.name}`} onSubmit=${(event) => event.preventDefault()}>
    ${general.length > 0 && html`<ul class="messages">${general.map((one) => html`<li class=${one.severity}>${one.text}</li>`)}</ul>`}
    <div class="row">
      <div ref=${name} class="grow"><${TextField} name="name" label="Name" limit=${state.limits.NAME}
        value=${component.name} problems=${problems} change=${text("name")} /></div>
      <${Choice} ...${shared} field="category" label="Category" choices=${Object.keys(state.limits.CATEGORIES)} />
    </div>
    <div class="row">
      <${Choice} ...${shared} field="callout" label="Line ends at" hint="of the callout" choices=${Object.keys(state.limits.CALLOUT_SIDES)} />
      <${Choice} ...${shared} field="style" label="Style" fallback=${Object.keys(state.document.styles)[0]} choices=${Object.keys(state.document.styles)} />
    </div>
    ${component.hardware === undefined && html`<${Choice} ...${shared} field="status" label="Status" choices=${Object.keys(state.limits.STATUSES)} />`}
    <${Section} title="Hardware" open=${component.hardware !== undefined} badge=${listOf(component.hardware).length}>
      <${Hardware} ...${shared} text=${text} />
    </${Section}>
    <${Section} title="Information lines" open=${Boolean(component.info)} badge=${listOf(component.info).length}>
      <${InfoLines} ...${shared} />
    </${Section}>
    <${Section} title="Setup option and choice" open=${problemsFor(problems, "token").length > 0}>
      <${Token} ...${shared} />
      <${Choice} ...${shared} field="align" label="Text" choices=${Object.keys(state.limits.ALIGNMENTS)} />
      <${CheckField} name="selectable" label="The callout can be chosen" value=${component.selectable ?? true} change=${(value) => set("selectable", value)} />
      <${CheckField} name="special_group" label="Belongs to the host's special group" value=${component.special_group ?? false} change=${(value) => set("special_group", value)} />
    </${Section}>
    <${Section} title="Points" open=${POINTS.some((line) => problemsFor(problems, line).length)}>
      <${Points} ...${shared} />
    </${Section}>
  </form>`;
}

const listOf = (value) => (Array.isArray(value) ? value : value === undefined ? [] : [value]);

function Choice({ field, fallback, component, set, problems, ...others }) {
  const value = component[field] ?? fallback ?? DEFAULTS[field] ?? "";
  return html`<${ChoiceField} name=${field} value=${value} problems=${problems}
    change=${(chosen) => set(field, chosen)} ...${others} />`;
}

const asHex = (number) => (number ? `0x${number.toString(16).toUpperCase().padStart(4, "0")}` : "0");

/** The number of a setup option, which people write in hexadecimal digits. */
function Token({ component, problems, set, store }) {
  // What is being typed stays as it is; "0x2" is no number of four digits yet.
  const [typed, setTyped] = useState(null);
  const token = component.token ?? 0;
  const change = (value, done) => {
    setTyped(value);
    if (done) return store.close();
    const text = value.trim();
    const number = /^(0x[\da-f]+|\d+)$/i.test(text) ? Number(text) : text;
    return set("token", text === "" ? 0 : number, true);
  };
  return html`<${TextField} name="token" label="Number of the setup option" hint="0 for none"
    value=${typed ?? (typeof token === "number" ? asHex(token) : token)} problems=${problems} change=${change} />`;
}

function Nothing({ state, actions }) {
  const none = state.document.components.length === 0;
  return html`<div class="nothing">
    <p>${none ? "Nothing is described yet." : "No component is chosen."}</p>
    <p class="hint">${none ? "Draw around a part of the picture: it becomes the first component." : "Choose one in the list or on the picture, or draw a new one."}</p>
    <${Button} label="Draw a component" keys="N" kind="primary" act=${actions.draw} />
  </div>`;
}
