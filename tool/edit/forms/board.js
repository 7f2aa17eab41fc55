/** The form of what belongs to the board as a whole. */

import { replaceAt, setField } from "../document.js";
import { html } from "./html.js";
import { Button, ChoiceField, Field, Section, TextField } from "./fields.js";

const TEXTS = [
  "First boot", "Graphics adapter", "Handed back to the host",
  "Processor line", "Memory line", "Graphics line", "First-boot line",
];
const COLORS = { text: "Text", background: "Background", mark: "Marks", border: "Border" };
const NUMBERS = { border_width: "Border width", radius: "Corner radius" };

export function BoardForm({ state, store, actions }) {
  const { document, limits, problems } = state;
  const set = (field, value, series) =>
    store.change(setField(document, field, value), `${field} of the board`, { series });
  const text = (field) => (value, done) => (done ? store.close() : set(field, value, field));
  return html`<form class="board" aria-label="Board" onSubmit=${(event) => event.preventDefault()}>
    <${TextField} name="board" label="Title" limit=${limits.TITLE} value=${document.board ?? ""} problems=${problems} change=${text("board")} />
    <div class="row">
      <${ChoiceField} name="logo" label="Logo" choices=${Object.keys(limits.LOGOS)} value=${document.logo ?? "A"} problems=${problems} change=${(value) => set("logo", value)} />
      <${ChoiceField} name="marker" label="Dots" choices=${Object.keys(limits.MARKERS)} value=${document.marker ?? "green"} problems=${problems} change=${(value) => set("marker", value)} />
    </div>
    <${ChoiceField} name="picture" label="Picture" choices=${state.pictures.map(({ name }) => name)} value=${document.picture} problems=${problems} change=${actions.changePicture} />
    <p class="hint">${state.size.join(" × ")} pixels. <${Button} label="Rescale coordinates …" kind="link" act=${actions.rescale} /></p>
    <${Section} title="Texts of the summary" open=${Boolean(document.system_info)} badge=${document.system_info?.length}>
      ${TEXTS.map((label, index) => html`<${SystemText} ...${{ label, index, document, limits, problems, set, store }} />`)}
    </${Section}>
    ${Object.entries(document.styles).map(([name, style]) => html`<${Style} ...${{ name, style, document, limits, problems, set, store }} />`)}
  </form>`;
}

function SystemText({ label, index, document, limits, problems, set, store }) {
  const texts = document.system_info ?? [];
  const change = (value, done) => {
    if (done) return store.close();
    const longer = [...texts, ...Array(Math.max(index + 1 - texts.length, 0)).fill("")];
    const changed = replaceAt(longer, index, value);
    while (changed.length && changed.at(-1) === "") changed.pop();
    return set("system_info", changed.length ? changed : undefined, `system_info ${index}`);
  };
  return html`<${TextField} name=${`system_info[${index}]`} label=${label} limit=${limits.SYSTEM_INFO_TEXT}
    value=${texts[index] ?? ""} problems=${problems} change=${change} />`;
}

function Style({ name, style, document, problems, set, store }) {
  const put = (look, field, value) => {
    const changed = { ...style, [look]: setField(style[look], field, value) };
    set("styles", { ...document.styles, [name]: changed }, `style ${name} ${look} ${field}`);
  };
  return html`<fieldset class="style"><legend>Style ${name}</legend>
    ${["default", "focus"].map((look) => typeof style?.[look] === "object" && html`<fieldset>
      <legend>${look === "default" ? "Usually" : "With the pointer on it"}</legend>
      <div class="colors">${Object.entries(COLORS).map(([field, label]) => html`<${Color}
        name=${`styles.${name}.${look}.${field}`} label=${label} problems=${problems}
        value=${style[look][field]} change=${(value) => put(look, field, value)} done=${() => store.close()} />`)}
      ${Object.entries(NUMBERS).map(([field, label]) => html`<${Field} name=${`styles.${name}.${look}.${field}`} label=${label} problems=${problems}
        render=${(attributes) => html`<input ...${attributes} type="number" min="0" max="255" value=${style[look][field] ?? 0}
          onChange=${(event) => put(look, field, Number(event.target.value))} />`} />`)}</div>
    </fieldset>`)}
  </fieldset>`;
}

const toHex = (text) => {
  const channels = String(text ?? "0,0,0").split(",").map(Number);
  return `#${channels.map((channel) => (channel & 255).toString(16).padStart(2, "0")).join("")}`;
};
const fromHex = (text) => [1, 3, 5].map((at) => Number.parseInt(text.slice(at, at + 2), 16)).join(",");

function Color({ value, change, done, ...field }) {
  return html`<${Field} ...${field} render=${(attributes) => html`<input ...${attributes} type="color"
    value=${toHex(value)} onInput=${(event) => change(fromHex(event.target.value))} onBlur=${done} />`} />`;
}
