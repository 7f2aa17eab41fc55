/** Fields of a form, each with its label and what the tool says about it. */

import { html } from "./html.js";

let count = 0;
/** Names elements that belong together. */
export const freshName = (what) => `${what}-${++count}`;

/** The problems of one field, and of what lies within it. */
export const problemsFor = (problems, field) =>
  problems.filter((one) => one.field === field || new RegExp(`^${field}[.[]`).test(one.field));

function Messages({ id, problems }) {
  return html`<ul id=${id} class="messages">
    ${problems.map(({ text, severity }) => html`<li class=${severity}>${text}</li>`)}
  </ul>`;
}

/** A label, its field, and messages under it. `render` gets what the field has to carry. */
export function Field({ name, label, problems = [], hint, render }) {
  const mine = problemsFor(problems, name);
  const id = `field-${name.replace(/\W+/g, "-")}`;
  const described = mine.length ? `${id}-said` : undefined;
  const attributes = {
    id,
    name,
    "aria-invalid": mine.some(({ severity }) => severity !== "warning") ? "true" : undefined,
    "aria-describedby": described,
  };
  return html`<div class="field">
    <label for=${id}>${label}${hint && html` <span class="hint">${hint}</span>`}</label>
    ${render(attributes)}
    ${described && html`<${Messages} id=${described} problems=${mine} />`}
  </div>`;
}

/** `change(value, done)`: done tells that the person has left the field. */
export function TextField({ value = "", limit, change, list, ...field }) {
  return html`<${Field} ...${field} render=${(attributes) => html`<input
    ...${attributes}
    type="text"
    autocomplete="off"
    spellcheck=${false}
    list=${list}
    maxlength=${limit}
    value=${value}
    onInput=${(event) => change(event.target.value, false)}
    onBlur=${() => change(null, true)}
  />`} />`;
}

export function ChoiceField({ value, choices, change, ...field }) {
  return html`<${Field} ...${field} render=${(attributes) => html`<select
    ...${attributes}
    onChange=${(event) => change(event.target.value)}
  >
    ${choices.includes(value) || html`<option value=${value} selected>${value}</option>`}
    ${choices.map((choice) => html`<option value=${choice} selected=${choice === value}>${choice}</option>`)}
  </select>`} />`;
}

export function CheckField({ value, change, label, name }) {
  const id = `field-${name}`;
  return html`<div class="field check">
    <input id=${id} name=${name} type="checkbox" checked=${value}
      onChange=${(event) => change(event.target.checked)} />
    <label for=${id}>${label}</label>
  </div>`;
}

/** A button; `keys` names the keys that do the same. */
export function Button({ label, keys, act, kind = "", disabled = false, children, ...others }) {
  const title = keys ? `${label} (${keys})` : label;
  return html`<button type="button" class=${kind} title=${title} disabled=${disabled}
    aria-label=${children ? label : undefined} onClick=${act} ...${others}>${children ?? label}</button>`;
}

/** A heading that opens and closes what belongs to it. */
export function Section({ title, open = false, badge, children }) {
  return html`<details class="section" open=${open}>
    <summary>${title}${badge ? html` <span class="badge">${badge}</span>` : null}</summary>
    <div class="inside">${children}</div>
  </details>`;
}
