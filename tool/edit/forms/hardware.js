/** What stands behind a component: alternatives, chosen from the inventory of a PC or typed. */

import { insertAt, removeAt, replaceAt } from "../document.js";
import { html } from "./html.js";
import { Button, TextField } from "./fields.js";

const listOf = (hardware) => (hardware === undefined ? [] : Array.isArray(hardware) ? hardware : [hardware]);

const entryOf = (alternative) => Object.entries(alternative)[0] ?? ["", ""];

/** Memory may be named by locator and bank. */
const spelt = (name) => (typeof name === "object" && name ? `${name.locator} / ${name.bank ?? ""}` : String(name ?? ""));

function read(kind, text) {
  const [locator, bank] = text.split(" / ");
  return kind === "memory" && bank !== undefined ? { locator, bank } : text;
}

export function Hardware({ component, problems, set, state, store, text }) {
  const { HARDWARE_KINDS, HARDWARE_NAMES, HARDWARE_NAME } = state.limits;
  const alternatives = listOf(component.hardware);
  const put = (changed) => set("hardware", changed.length ? changed : undefined);
  const change = (index, kind, name, series) =>
    set("hardware", replaceAt(alternatives, index, { [kind]: name }), series);
  return html`<p class="hint">${state.inventory.length
      ? `${state.inventory.length} names from the inventory can be chosen.`
      : "Drop the inventory.yaml of a PC onto the page to choose from what it has."}</p>
    <ul class="rows">
    ${alternatives.map((alternative, index) => {
      const [kind, name] = entryOf(alternative);
      return html`<li class="hardware-line">
        <select aria-label=${`Kind of alternative ${index + 1}`} onChange=${(event) => change(index, event.target.value, name)}>
          ${Object.keys(HARDWARE_KINDS).map((one) => html`<option selected=${one === kind}>${one}</option>`)}
        </select>
        <input type="text" value=${spelt(name)} list=${`inventory-${kind}`} autocomplete="off" spellcheck=${false}
          aria-label=${`Name of alternative ${index + 1}`}
          onInput=${(event) => change(index, kind, read(kind, event.target.value), `${index} name`)}
          onBlur=${() => store.close()} />
        <${Button} label=${`Delete alternative ${index + 1}`} kind="icon" act=${() => put(removeAt(alternatives, index))}>×</${Button}>
        ${about(state.inventory, kind, name)}
        ${messages(problems, index, alternatives.length)}
      </li>`;
    })}
    </ul>
    ${Object.keys(HARDWARE_KINDS).map((kind) => html`<datalist id=${`inventory-${kind}`}>
      ${state.inventory.filter((one) => one.kind === kind).map((one) => html`<option value=${spelt(one.name)}>${one.about}</option>`)}
    </datalist>`)}
    <div class="row">
      <${Button} label="Add hardware" disabled=${alternatives.length >= HARDWARE_NAMES}
        act=${() => put(insertAt(alternatives, alternatives.length, { slot: "" }))} />
      <${Chooser} inventory=${state.inventory} choose=${({ kind, name }) => put([...alternatives.filter((one) => entryOf(one)[1] !== ""), { [kind]: name }])} />
    </div>
    ${alternatives.length > 0 && html`<${TextField} name="needs-processor" label="Only with the processor" hint="part of its name"
      limit=${HARDWARE_NAME} value=${component["needs-processor"] ?? ""} problems=${problems}
      change=${(value, done) => (done ? store.close() : set("needs-processor", value || undefined, true))} />`}`;
}

const messages = (problems, index, count) =>
  problems
    .filter(({ field }) => field.startsWith(`hardware[${index}]`) || (count === 1 && /^hardware($|\.)/.test(field)))
    .map(({ text }) => html`<p class="message">${text}</p>`);

function about(inventory, kind, name) {
  const found = inventory.find((one) => one.kind === kind && spelt(one.name) === spelt(name));
  return found?.about && html`<p class="hint">${found.about}</p>`;
}

/** The inventory as a list to choose from. */
function Chooser({ inventory, choose }) {
  if (!inventory.length) return null;
  const kinds = [...new Set(inventory.map(({ kind }) => kind))];
  return html`<select class="chooser" aria-label="Choose from the inventory" value=""
    onChange=${(event) => {
      const chosen = inventory[Number(event.target.value)];
      event.target.value = "";
      if (chosen) choose(chosen);
    }}>
    <option value="">Choose from the inventory …</option>
    ${kinds.map((kind) => html`<optgroup label=${kind}>
      ${inventory.map((one, index) => one.kind === kind && html`<option value=${index}>${spelt(one.name)}${one.about && ` – ${one.about}`}</option>`)}
    </optgroup>`)}
  </select>`;
}
