/** Starts the page. */

import { h, render } from "preact";
import * as api from "./api.js";
import { makeActions } from "./actions.js";
import { App } from "./forms/app.js";
import { Store } from "./store.js";
import { watch } from "./watching.js";

/** Until it is known, or when there is no such picture: as large as the format allows. */
const ANY_SIZE = [4095, 4095];

/** The size of the picture that the document names, of which undo may make another one. */
function withSize(state) {
  const { document, pictures } = state;
  const picture = document && pictures.find(({ name }) => name === document.picture);
  return { ...state, size: picture?.size ?? ANY_SIZE };
}

const store = new Store({
  document: null, base: null, saved: null, selected: null, handle: null, hovered: null, draft: null, dragging: false,
  fresh: null, dialog: null, tab: "component", said: "", error: "", problems: [], faulty: new Map(),
  inventory: [], measures: null, resolution: "1920x1080", largeView: false, saving: false,
  live: { address: "", error: "", busy: false }, pictures: [], folder: null,
}, withSize);
const actions = makeActions(store);

await actions.load();
const page = document.querySelector("#page");
page.replaceChildren();
render(h(App, { store, actions }), page);
watch(store, api, actions);
