// Changes on their way to the server: in order, one at a time. What belongs to the same gesture and still waits is
// joined, so that a drag never runs behind the pointer.
import { getJson, post, Refusal } from './api.js';
import { say } from './dialogs.js';
import { arrive, wishAlong } from './picture.js';
import { flushSource } from './source.js';
import { activeDocument, adopt, item, keyOf, kinds, nextStep, select, state, tell, unsavedDocuments } from './state.js';

const waiting = [];
let busy = false;
let latest = Promise.resolve();
let gesture = Promise.resolve();

/** Asks for a change of a document; tells whether it was made. The same `merge` in a row is one step of undo. */
export function edit(name, label, operations, merge = '') {
  if (!operations.length) return Promise.resolve(true);
  const last = waiting.at(-1);
  if (merge && last?.merge === merge && last.name === name) {
    last.operations = operations[0].do === 'replace_text' ? [{ ...operations[0], base: last.operations[0].base }]
      : last.operations.concat(operations);
    return last.done;
  }
  return ask({ path: 'edit', name, label, merge, operations, chosen: { keys: state.selection, look: state.look } });
}

const together = []; // steps of several documents that are one: {label, numbers by document}
/** Changes several documents, [[name, operations]], all or none; undo and redo then go through all of them. */
export async function editTogether(changes, label, merge = '') {
  const numbers = new Map();
  for (const [name, operations] of changes) {
    if (!operations.length) continue;
    if (!await edit(name, label, operations, merge)) {
      for (const made of numbers.keys()) await ask({ path: 'undo', name: made });
      return false;
    }
    numbers.set(name, state.documents.get(name).done);
  }
  if (numbers.size > 1) together.push({ label, numbers });
  return true;
}
/** The documents in which a step belongs to the one that is next in this document. */
function alongWith({ path, name }) {
  const isNext = ({ label, numbers }, document) => label === nextStep(state.documents.get(document), path) &&
    numbers.get(document) === state.documents.get(document).done + (path === 'undo' ? 0 : 1);
  const found = ['undo', 'redo'].includes(path) && together.findLast((each) => isNext(each, name));
  return found ? [...found.numbers.keys()].filter((each) => each !== name && isNext(found, each)) : [];
}

/** To undo or redo a step. */
export async function travel(path, name = activeDocument()?.name) {
  if (nextStep(state.documents.get(name), path) || isBusy()) return ask({ path, name });
  say(`There is nothing to ${path} in this document.`);
  return false;
}

/** Saves, with what is being typed. */
export async function saveAll() {
  const active = document.activeElement;
  if (active.matches('input:not([type="checkbox"])')) active.dispatchEvent(new Event('change', { bubbles: true }));
  await flushSource();
  return ask({ path: 'save' });
}
export async function playNow() {
  if (unsavedDocuments().length && !await saveAll()) return;
  try {
    await post('play', {});
    say('The program has started.');
  } catch (error) {
    say(error.message, 'bad');
  }
}
export const resolve = (name, conflict, choice) => ask({ path: 'resolve', name, conflict, choice });
export const recover = (take) => ask({ path: 'recover', take });
export const isBusy = () => busy || waiting.length > 0;

/** A gesture that is over still sends until this has ended. */
export const gestureEnds = (ending) => { gesture = ending; };
/** When the documents have all changes so far: only then can places in them be measured. */
export async function settled() {
  await gesture;
  await latest;
}

function ask(request) {
  latest = request.done = new Promise((settle) => { request.settle = settle; });
  waiting.push(request);
  tell('queue');
  if (!busy) work();
  return request.done;
}

async function work() {
  busy = true;
  while (waiting.length) {
    const request = waiting.shift();
    const others = alongWith(request);
    const made = await sent(request);
    for (const name of others) await sent({ path: request.path, name });
    request.settle(made);
  }
  busy = false;
  tell('queue');
}

/** What a request says; one about a document asks for the picture along with it. */
const bodyOf = ({ path, chosen, done, settle, ...request }) => (request.name ? { ...request, ...wishAlong(),
  revision: state.documents.get(request.name)?.revision ?? 0 } : request);

/** A document of which only what is different has come. */
async function whole({ since, lists = {}, lines, picture, pixels, ...rest }) {
  if (since === undefined) return rest;
  const known = state.documents.get(rest.name);
  if (known?.revision !== since) return getJson('document', { name: rest.name });
  const document = { ...known, ...rest };
  for (const [name, { size, changed }] of Object.entries(lists)) {
    document[name] = known[name].slice(0, size);
    for (const [index, record] of Object.entries(changed)) document[name][index] = record;
  }
  if (lines) document.text = known.text.split('\n').toSpliced(lines.at, lines.count, ...lines.lines).join('\n');
  return document;
}

const chosenAt = new Map(); // what was chosen when a step was made, by document and the step's number

/** After an undo or redo: what was chosen for the step, else what it has changed, so that it is seen. */
function chooseAgain(path, before, now) {
  const { keys = [], look } = chosenAt.get(`${now.name} ${Math.min(before.done, now.done)}`) ?? {};
  const there = keys.filter((key) => item(key));
  const changed = changedBetween(before, now);
  if (there.length && (path === 'undo' || there.some((key) => changed.includes(key)))) select(there, { look });
  else if (!changed.every((key) => state.selection.includes(key))) select(changed);
}
function changedBetween(before, now) {
  const text = (record) => JSON.stringify({ ...record, line: 0 });
  for (const kind of ['style', 'slot', 'window', 'buffer']) {
    const known = new Set(before[`${kind}s`].map(text));
    const keys = now[`${kind}s`].filter((each) => !known.has(text(each)))
      .map((each) => keyOf(kind, each[kinds[kind].by]));
    if (keys.length) return keys;
  }
  return [];
}

async function sent(request, again = true) {
  try {
    const before = state.documents.get(request.name);
    const answer = await post(request.path, bodyOf(request));
    if (answer.picture) arrive(answer.picture, answer.pixels);
    for (const document of answer.documents ?? [await whole(answer)]) adopt(document);
    if (request.chosen) chosenAt.set(`${request.name} ${before.done}`, request.chosen);
    const now = state.documents.get(request.name);
    if (['undo', 'redo'].includes(request.path) && now) chooseAgain(request.path, before, now);
    if (request.path !== 'save') return true;
    const names = answer.saved.map((each) => each.split('/').pop());
    say(names.length ? `Saved ${names.join(', ')}.` : 'There was nothing to save.');
    return !sayWhatIsNot(answer);
  } catch (error) {
    if (!(error instanceof Refusal)) {
      say('The tool does not answer: nothing was changed.', 'bad');
      return false;
    }
    if (error.status === 409 && error.answer.document) {
      adopt(error.answer.document);
      if (again) return sent(request, false); // operations name records, so they still mean the same
    }
    if (!sayWhatIsNot(error.answer)) {
      say(error.message, 'bad');
      tell('document');
    }
    return false;
  }
}

function sayWhatIsNot({ faults: [fault] = [] }) {
  if (!fault) return false;
  say(`${fault.document} is not saved: ${fault.code} ${fault.where} ${fault.problem}`, 'bad');
  tell('unsaved');
  return true;
}
