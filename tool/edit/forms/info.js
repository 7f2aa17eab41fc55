/** The lines that the panel shows. */

import { insertAt, removeAt, replaceAt, setField } from "../document.js";
import { html } from "./html.js";
import { Button, problemsFor } from "./fields.js";

export function InfoLines({ component, problems, set, state, store }) {
  const lines = component.info ?? [];
  const { LABEL, VALUE, INFO_LINES, INFO_KINDS } = state.limits;
  const put = (changed) => set("info", changed.length ? changed : undefined);
  const change = (index, field, value) =>
    set("info", replaceAt(lines, index, setField(lines[index], field, value)), `${index} ${field}`);
  const input = (line, index, field, limit, label) => html`<input type="text" class=${field}
    value=${line[field] ?? ""} maxlength=${limit} placeholder=${label} autocomplete="off"
    aria-label=${`${label} of line ${index + 1}`}
    aria-invalid=${problemsFor(problems, `info[${index}].${field}`).length ? "true" : undefined}
    onInput=${(event) => change(index, field, event.target.value || (field === "label" ? undefined : ""))}
    onBlur=${() => store.close()} />`;
  return html`<ul class="rows">
    ${lines.map((line, index) => html`<li class="info-line">
      <select aria-label=${`Place of line ${index + 1}`} onChange=${(event) => change(index, "kind", event.target.value)}>
        ${Object.keys(INFO_KINDS).map((kind) => html`<option selected=${kind === (line.kind ?? "description")}>${kind}</option>`)}
      </select>
      ${input(line, index, "label", LABEL, "Label")}
      ${input(line, index, "value", VALUE, "Value")}
      <${Button} label=${`Delete line ${index + 1}`} kind="icon" act=${() => put(removeAt(lines, index))}>×</${Button}>
      ${problems.filter(({ field }) => field.startsWith(`info[${index}]`)).map(({ text }) => html`<p class="message">${text}</p>`)}
    </li>`)}
    ${problems.filter(({ field }) => field === "info").map(({ text }) => html`<li class="message">${text}</li>`)}
  </ul>
  <${Button} label="Add a line" disabled=${lines.length >= INFO_LINES}
    act=${() => put(insertAt(lines, lines.length, { label: "", value: "" }))} />`;
}
