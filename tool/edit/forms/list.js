/** The list of components, in the order of the file. */

import { Component } from "preact";
import { useCallback, useEffect, useRef } from "preact/hooks";
import { reorder } from "../document.js";
import { html } from "./html.js";
import { Button } from "./fields.js";

const STEPS = { ArrowUp: -1, ArrowDown: 1 };

export function ComponentList({ state, store, actions }) {
  const list = useRef(null);
  const { components } = state.document;
  const place = components.findIndex(({ id }) => id === state.selected);
  useEffect(() => {
    list.current?.querySelector("[aria-selected=true]")?.scrollIntoView({ block: "nearest" });
  }, [state.selected]);
  const choose = useCallback((id) => store.set({ selected: id, handle: null }), []);
  const onKey = (event) => {
    const step = STEPS[event.key];
    if (step && event.altKey) move(step);
    else if (step) choose(components[Math.min(Math.max(place + step, 0), components.length - 1)].id);
    else if (event.key === "Enter") actions.focusDrawing();
    else if (event.key === "Delete") actions.remove();
    else return;
    event.preventDefault();
    event.stopPropagation();
  };
  const move = (step) =>
    store.change(reorder(state.document, state.selected, step), "Order changed", {
      said: `Now number ${Math.min(Math.max(place + step, 0), components.length - 1) + 1} of ${components.length}`,
    });
  return html`<section class="list" aria-label="Components">
    <h2>Components <span class="badge">${components.length} of ${state.limits.COMPONENTS}</span></h2>
    <ul role="listbox" aria-label="Components" tabindex="0" ref=${list}
      aria-activedescendant=${state.selected ? `item-${state.selected}` : undefined}
      onKeyDown=${components.length ? onKey : undefined}>
      ${components.map((component, index) => html`<${Item} key=${component.id} id=${component.id}
        name=${component.name} category=${component.category} selected=${index === place}
        faults=${state.faulty.get(component.id)?.count} error=${state.faulty.get(component.id)?.error} choose=${choose} />`)}
    </ul>
    <div class="tools" role="toolbar" aria-label="The chosen component">
      <${Button} label="Forward: gets the pointer before those behind it" keys="Alt+Up" kind="icon" disabled=${place <= 0} act=${() => move(-1)}>↑</${Button}>
      <${Button} label="Backward" keys="Alt+Down" kind="icon" disabled=${place < 0 || place === components.length - 1} act=${() => move(1)}>↓</${Button}>
      <${Button} label="Copies" keys="Ctrl+D" disabled=${place < 0} act=${actions.copies}>Copies …</${Button}>
      <${Button} label="Delete" keys="Delete" disabled=${place < 0} act=${actions.remove} />
    </div>
  </section>`;
}

class Item extends Component {
  /** There may be a hundred, of which one has changed. */
  shouldComponentUpdate(next) {
    return Object.keys(next).some((key) => next[key] !== this.props[key]);
  }

  render({ id, name, category, selected, faults, error, choose }) {
    const said = faults && `${faults} ${faults === 1 ? "thing" : "things"} to look at`;
    return html`<li id=${`item-${id}`} role="option" aria-selected=${selected} onClick=${() => choose(id)}>
      <span class="name">${name || "(no name)"}</span>
      <span class="hint">${category}</span>
      ${said && html`<span class=${error ? "fault" : "fault warning"} title=${said} aria-label=${said}>${faults}</span>`}
    </li>`;
  }
}
