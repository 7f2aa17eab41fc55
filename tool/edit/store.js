/**
 * The page's state: the document with its history, and what the person is looking at. Whoever shows
 * a part of it subscribes, and is called after each change.
 */

export class Store {
  #listeners = new Set();
  #past = [];
  #future = [];
  #open = null;

  /** @param derive adds what follows from the rest of a state */
  constructor(state, derive = (changed) => changed) {
    this.derive = derive;
    this.state = derive(state);
  }

  subscribe(listener) {
    this.#listeners.add(listener);
    return () => this.#listeners.delete(listener);
  }

  /** Changes what is no part of the document: the selection, the tool, messages. */
  set(changes) {
    this.state = this.derive({ ...this.state, ...changes });
    for (const listener of this.#listeners) listener(this.state);
  }

  /**
   * A step that can be undone. Steps that follow one another with the same `series` are one, so that
   * a movement or a word is taken back at once.
   */
  change(document, what, { series = null, ...others } = {}) {
    if (document === this.state.document) {
      if (Object.keys(others).length) this.set(others);
      return;
    }
    if (series === null || this.#open !== series) {
      const { document: before, selected, handle } = this.state;
      this.#past.push({ document: before, selected, handle, what });
    }
    this.#open = series;
    this.#future = [];
    this.set({ document, ...others });
  }

  /** Ends a series: what comes next is a step of its own. */
  close() {
    this.#open = null;
  }

  get canUndo() {
    return this.#past.length > 0;
  }

  get canRedo() {
    return this.#future.length > 0;
  }

  /** What would be taken back, in words. */
  get lastStep() {
    return this.#past.at(-1)?.what ?? "";
  }

  undo() {
    this.#step(this.#past, this.#future, "Undone");
  }

  redo() {
    this.#step(this.#future, this.#past, "Done again");
  }

  #step(from, to, said) {
    const entry = from.pop();
    if (!entry) return;
    const { document, selected, handle } = this.state;
    to.push({ document, selected, handle, what: entry.what });
    this.#open = null;
    const { what, ...earlier } = entry;
    this.set({ ...earlier, draft: null, said: `${said}: ${what}` });
  }

  /** Forgets the history, for a document that was loaded anew. */
  reset(changes) {
    this.#past = [];
    this.#future = [];
    this.#open = null;
    this.set(changes);
  }
}
