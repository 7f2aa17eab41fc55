/** What the page asks its server. The token is part of the address that the page itself has. */

export class Failure extends Error {
  /** @param {number} status @param {any} answer */
  constructor(status, answer) {
    super(answer.error ?? `The tool answered ${status}.`);
    this.status = status;
    this.answer = answer;
  }
}

const GONE = { error: "The tool does not answer. Start it again, and open the address it prints." };

/** Larger ones are not even sent. */
const MOST_BYTES = 32e6;

async function ask(address, options = {}) {
  let response;
  try {
    response = await fetch(`./${address}`, { cache: "no-store", ...options });
  } catch (error) {
    if (error.name === "AbortError") throw error;
    throw new Failure(0, GONE);
  }
  if (!response.ok) {
    throw new Failure(response.status, await response.json().catch(() => ({})));
  }
  return response;
}

const json = async (address, options) => (await ask(address, options)).json();

const post = (address, body, signal) =>
  ask(address, {
    method: "POST",
    headers: { "Content-Type": "application/json" },
    body: JSON.stringify(body),
    signal,
  });

/** The document as the server takes it: components by their places in the file that was loaded. */
export function outgoing({ document, base }) {
  const components = document.components.map(({ id, ...fields }) => ({
    ...fields,
    origin: base.origins.get(id) ?? null,
  }));
  return { key: base.key, document: { ...document, components } };
}

export const loadBoard = () => json("board");
export const firstBoard = async (picture) => (await post("first", { picture })).json();
export const check = async (state, measured) =>
  (await post("check", { ...outgoing(state), measured })).json();
export const save = async (state, instead) =>
  (await post("save", { ...outgoing(state), instead })).json();
export const view = async (state, options, signal) =>
  (await post("view", { ...outgoing(state), options }, signal)).blob();
export const measures = async (state, options) =>
  (await post("measures", { ...outgoing(state), options })).json();
export const inventory = async (file) =>
  (await ask("inventory", { method: "POST", body: small(file) })).json();
export const putPicture = async (file) =>
  (await ask(pictureAddress(file.name), { method: "PUT", body: small(file) })).json();

export const pictureAddress = (name) => `pictures/${name.split("/").map(encodeURIComponent).join("/")}`;

function small(file) {
  if (file.size <= MOST_BYTES) return file;
  const size = Math.round(file.size / 1e6);
  throw new Failure(413, { error: `${file.name} has ${size} MB; at most 32 MB are taken.` });
}
