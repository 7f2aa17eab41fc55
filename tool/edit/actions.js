/** What the person can have done, from wherever on the page. */

import * as api from "./api.js";
import { freshId } from "./document.js";
import { remove } from "./drawing/keys.js";
import { alignCallouts } from "./proposals.js";

/** What was loaded, for the page: components get names of the page's own. */
export function opened({ key, document }) {
  const origins = new Map();
  const components = document.components.map(({ origin, ...fields }) => {
    const id = freshId();
    origins.set(id, origin);
    return { outline: [], leader: [], marker: [0, 0], ...fields, id };
  });
  return { document: { ...document, components }, base: { key, origins } };
}

export function makeActions(store) {
  const failed = (error) => store.set({ error: error.message, saving: false });
  const sizeOf = (name) => store.state.pictures.find((one) => one.name === name)?.size;

  const show = (answer, onDisk) => {
    const { document, base } = opened(answer);
    store.reset({
      document, base: { ...base, onDisk }, saved: onDisk ? document : null, error: "",
      selected: null, handle: null, draft: null, dialog: null, unfit: undefined,
    });
  };

  const actions = {
    drawing: null,
    pictureAddress: (name) => `./${api.pictureAddress(name)}`,

    async load() {
      try {
        const { folder, limits, pictures, unfit, problems = [], ...answer } = await api.loadBoard();
        store.set({ folder, limits, pictures, unfit, problems });
        document.title = `${folder} – board`;
        if (answer.document) show(answer, true);
      } catch (error) {
        failed(error);
      }
    },

    reload: () => actions.load(),

    async begin(picture) {
      try {
        show(await api.firstBoard(picture), false);
        store.set({ said: "A new board: draw around the first component" });
      } catch (error) {
        failed(error);
      }
    },

    async save(instead) {
      const { document, saving } = store.state;
      if (saving || !document) return;
      store.set({ saving: true, dialog: null, error: "" });
      try {
        const { key } = await api.save(store.state, instead);
        const origins = new Map(document.components.map(({ id }, place) => [id, place]));
        store.set({ saving: false, saved: document, base: { key, origins, onDisk: true }, said: "Saved" });
      } catch (error) {
        failed(error);
        if (error.answer?.mine !== undefined) {
          store.set({ error: "", dialog: { kind: "conflict", ...error.answer } });
        }
      }
    },

    /** Takes files that were dropped or chosen: pictures and inventories. */
    async takeFiles(files) {
      try {
        for (const file of files) await actions.takeFile(file);
      } catch (error) {
        failed(error);
      }
    },

    async takeFile(file) {
      if (file.type === "image/png" || file.name.toLowerCase().endsWith(".png")) {
        const { pictures } = await api.putPicture(file);
        store.set({ pictures, error: "" });
        if (store.state.document) actions.changePicture(file.name);
        else await actions.begin(file.name);
        return;
      }
      const { hardware } = await api.inventory(file);
      store.set({
        inventory: hardware, error: "", tab: "component",
        said: `${hardware.length} pieces of hardware to choose from`,
      });
    },

    changePicture(picture) {
      const { size, document } = store.state;
      const to = sizeOf(picture) ?? size;
      if (to.join() === size.join()) store.change({ ...document, picture }, "Picture");
      else store.set({ dialog: { kind: "rescale", picture, from: size, to } });
    },

    rescale: () => store.set({ dialog: { kind: "rescale", from: store.state.size } }),
    draw: () => actions.drawing.drawNew(),
    focusDrawing: () => actions.drawing.focus(),
    remove() {
      store.set({ handle: null });
      remove(store);
    },
    copies: () => store.state.selected && store.set({ dialog: { kind: "copies" } }),
    align() {
      const { document, size } = store.state;
      store.change(alignCallouts(document, size), "Callouts in columns", { said: "Callouts stand in columns" });
    },
    setResolution: (resolution) => store.set({ resolution, measures: null }),
    showProblem({ component }) {
      const chosen = store.state.document.components[component];
      store.set(chosen ? { tab: "component", selected: chosen.id, handle: null } : { tab: "board" });
    },
  };
  return actions;
}
