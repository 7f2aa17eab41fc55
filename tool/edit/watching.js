/** What follows from a change by itself: the tool's checks, the live view, keys of the whole page. */

/** The tool's checks wait for pauses of that length, in milliseconds. */
const PAUSE = 250;
const LONG_PAUSE = 1000;

export function watch(store, api, actions) {
  watchChecks(store, api);
  watchView(store, api);
  watchMeasures(store, api);
  watchWindow(store, actions);
}

/** Runs `ask` for the latest state, one at a time: what changes meanwhile is asked for afterwards. */
function latest(ask) {
  let running = false;
  let next = null;
  return async function run(...details) {
    next = details;
    if (running) return;
    running = true;
    while (next) {
      const now = next;
      next = null;
      await ask(...now);
    }
    running = false;
  };
}

/**
 * Calls `act` when one of the state's named parts has changed, and once at the start. A drag is one
 * change, at its end.
 */
function whenChanged(store, parts, act) {
  let before = [];
  const look = (state) => {
    if (state.dragging) return;
    const now = parts.map((part) => state[part]);
    if (!state.document || now.every((value, i) => value === before[i])) return;
    before = now;
    act();
  };
  store.subscribe(look);
  look(store.state);
}

/** First what the text alone tells; after a longer pause, what has to be measured in the view. */
function watchChecks(store, api) {
  let timer = 0;
  const ask = latest(async (measured) => {
    const { document } = store.state;
    try {
      const { problems } = await api.check(store.state, measured);
      if (document !== store.state.document) return;
      const shown = measured ? problems : [...problems, ...pending(problems, store.state)];
      store.set({ problems: shown, faulty: countFaults(shown, document), checked: document });
      const errors = problems.some(({ severity }) => severity === "error");
      if (!measured && !errors) timer = setTimeout(ask, LONG_PAUSE, true);
    } catch (error) {
      // Without a view, as its own place on the page tells, nothing is measured.
      if (!measured) store.set({ error: error.message });
    }
  });
  whenChanged(store, ["document", "base"], () => {
    clearTimeout(timer);
    timer = setTimeout(ask, PAUSE, false);
  });
}

/** Warnings that stay until it is measured whether they still hold. */
function pending(problems, { document, problems: before, checked }) {
  if (checked?.components.length !== document.components.length) return [];
  const said = ({ component, field, text }) => `${component} ${field} ${text}`;
  const now = new Set(problems.map(said));
  return before.filter((one) => one.severity === "warning" && !now.has(said(one)));
}

/** For each component that something is said of: how much, and whether there are errors among it. */
function countFaults(problems, document) {
  const faults = new Map();
  for (const { component, severity } of problems) {
    const id = document.components[component]?.id;
    if (id === undefined) continue;
    const { count, error } = faults.get(id) ?? { count: 0, error: false };
    faults.set(id, { count: count + 1, error: error || severity === "error" });
  }
  return faults;
}

const hovered = ({ document, hovered: id, selected }) =>
  document.components.find((one) => one.id === (id ?? selected))?.name;

function watchView(store, api) {
  const ask = latest(async () => {
    const { live, resolution } = store.state;
    store.set({ live: { ...live, busy: true } });
    try {
      const picture = await api.view(store.state, { resolution, hover: hovered(store.state) });
      if (live.address) URL.revokeObjectURL(live.address);
      store.set({ live: { address: URL.createObjectURL(picture), error: "", busy: false } });
    } catch (error) {
      store.set({ live: { ...live, error: error.message, busy: false } });
    }
  });
  whenChanged(store, ["document", "base", "selected", "hovered", "resolution"], ask);
}

/** Callouts stand at their true size: what the view has measured, in pixels of the picture. */
function watchMeasures(store, api) {
  let asked = "";
  const ask = latest(async () => {
    const { resolution, size } = store.state;
    try {
      const { picture, components } = await api.measures(store.state, { resolution });
      if (resolution !== store.state.resolution) return;
      const scale = [size[0] / picture[2], size[1] / picture[3]];
      const measures = components.map(({ name, text, callout }) => {
        return [name, { text, size: [callout[2] * scale[0], callout[3] * scale[1]] }];
      });
      store.set({ measures: new Map(measures) });
    } catch {
      // There is no view, as its own place on the page tells; callouts keep their guessed size.
    }
  });
  whenChanged(store, ["document", "base", "resolution", "size"], () => {
    const { document, resolution } = store.state;
    const looks = document.components.map(({ name, style, status, hardware }) => [name, style, status, hardware]);
    const question = JSON.stringify([resolution, document.styles, looks]);
    if (question === asked) return;
    asked = question;
    ask();
  });
}

function watchWindow(store, actions) {
  addEventListener("keydown", (event) => pageKey(event, store, actions));
  addEventListener("beforeunload", (event) => {
    const { document, saved } = store.state;
    if (document && document !== saved) event.preventDefault();
  });
  addEventListener("dragover", (event) => event.preventDefault());
  addEventListener("drop", (event) => {
    event.preventDefault();
    actions.takeFiles(event.dataTransfer.files);
  });
}

const isTyping = ({ target }) => target.matches?.("input, select, textarea");

function pageKey(event, store, actions) {
  if (!store.state.document || store.state.dialog) return;
  const key = event.key.toLowerCase();
  const control = event.ctrlKey || event.metaKey;
  const act = control ? CONTROL_KEYS[event.shiftKey ? `shift+${key}` : key] : !isTyping(event) && KEYS[key];
  if (!act) return;
  event.preventDefault();
  act(store, actions);
}

const CONTROL_KEYS = {
  s: (_, actions) => actions.save(),
  z: (store) => store.undo(),
  y: (store) => store.redo(),
  "shift+z": (store) => store.redo(),
  d: (_, actions) => actions.copies(),
};

const KEYS = {
  n: (_, actions) => actions.draw(),
  "?": (store) => store.set({ dialog: { kind: "help" } }),
};
