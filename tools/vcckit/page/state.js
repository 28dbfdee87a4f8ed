// What the page knows, and who is told when it changes. Documents are the server's; nothing here changes them.

export const WIDTH = 800;
export const HEIGHT = 600;
export const SCREEN = [0, 0, WIDTH, HEIGHT];

export const state = {
  project: null,
  documents: new Map(),
  view: 'menu',
  language: 'en',
  row: null, ///< options: the option whose values are shown
  module: null, ///< options: whose settings
  about: null, ///< help: the menu's slot
  list: 'slots', ///< which list is open: slots, windows, styles, buffers
  look: '', ///< in which the chosen slot is shown and changed: '', highlight, pressed
  selection: [], ///< keys such as "slot:3"; the last one is the leading one
  hovered: null,
  faults: [], ///< of the whole installation
};

export const viewNames = { menu: 'Menu', options: 'Options', help: 'Help', message: 'Message',
  vcc_options_info: 'Explanations' };
/** Whether slots of this screen can be shown under the pointer and pressed. */
export const canPreview = () => ['menu', 'options'].includes(state.view);

const topicsOf = new EventTarget();

/**
 * Topics: project, document, view, selection, hovered, faults, list, preferences, zoom, picture, pointer, queue; source
 * (a place in a source is to be shown), field (one of the properties is to be), unsaved (a fault forbids to save).
 */
export function on(topics, run) {
  for (const topic of topics.split(' ')) topicsOf.addEventListener(topic, ({ detail }) => run(detail));
}
export const tell = (topic, detail) => topicsOf.dispatchEvent(new CustomEvent(topic, { detail }));

/** Takes what a server's answer says of a document, unless a newer one is here. */
export function adopt(document) {
  const known = state.documents.get(document.name);
  if (known && known.revision > document.revision) return;
  state.documents.set(document.name, document);
  keepWhatIsThere();
  tell('document', document);
}

export const viewOf = (name) => state.project?.views.find((each) => each.view === name);
export const screenDocument = () => state.documents.get(viewOf(state.view)?.document);
export const allDocuments = () => [...state.documents.values()];
export const unsavedDocuments = () => allDocuments().filter((each) => each.dirty);
export const windowsDocuments = () => allDocuments().filter((each) => each.kind === 'windows');
/** The text windows, of the shown language where each has a file of its own. */
export function windowsDocument() {
  const all = windowsDocuments();
  const prefix = { en: 'e_', de: 'g_' }[state.language];
  return all.find((each) => each.name.startsWith(prefix)) ?? all[0];
}
export const buffersDocument = () => allDocuments().find((each) => each.kind === 'buffers');

/** What a slot or toggle record is in the language that is shown. */
export const shownOf = (record) => record.languages[state.language] ?? Object.values(record.languages)[0];
const looksOf = (record) => ({ shown: shownOf(record), rect: shownOf(record).rect });

/**
 * Kinds of records, of which a document has a list, "slots" for "slot": what tells them apart there, the page's list
 * that shows them, and the document; `shows` tells of a record what `item` has beyond it.
 */
export const kinds = {
  slot: { title: 'Slot', by: 'index', list: 'slots', document: screenDocument, shows: looksOf },
  toggle: { title: 'Toggle record', by: 'index', list: 'slots', document: screenDocument, shows: looksOf },
  window: { title: 'Text window', by: 'number', list: 'windows', document: windowsDocument,
    shows: ({ number, values, protected: role, rect }) => ({ rect: rect[2] > 0 && rect[3] > 0 ? rect : null,
      name: values.title || role || nameOfShowing(number) || 'text window' }) },
  style: { title: 'Style', by: 'name', list: 'styles', document: screenDocument, shows: () => ({}) },
  buffer: { title: 'Buffer', by: 'number', list: 'buffers', document: buffersDocument,
    shows: ({ values }) => ({ name: String(values.picture).split(/[\\/]/).pop() }) },
};
/** What the list that is open is made from. */
export const listDocument = () => Object.values(kinds).find((each) => each.list === state.list).document();
/** The document that undo and the source are about. */
export const activeDocument = () => lead()?.document ?? listDocument();

/** What the step is called that undo or redo would take; undefined without one. */
export const nextStep = (document, path) => document?.steps[document.done - (path === 'undo' ? 1 : 0)];

export const keyOf = (kind, number) => `${kind}:${number}`;
export function addressOf(key) {
  const [, kind, id] = key.match(/^(.*?):(.*)$/s);
  return { [kind]: kind === 'style' ? id : Number(id) };
}

/** All of a kind, by number. Toggle records without a table of their own are looks of slots, and shown with these. */
export function itemsOf(kind, document = kinds[kind].document()) {
  return (document?.[`${kind}s`] ?? []).filter((record) => kind !== 'toggle' || record.line > 0)
    .map((record) => itemOf(kind, document, record)).sort((a, b) => (a.index ?? 0) - (b.index ?? 0));
}
const itemOf = (kind, document, record) => ({ key: keyOf(kind, record[kinds[kind].by]), kind, document, record,
  index: record.index ?? record.number, name: record.name ?? '', line: record.line, ...kinds[kind].shows(record) });
/** What a key stands for: {key, kind, document, record, name, rect, ...}; null when it is not there. */
export function item(key) {
  const [[kind, id]] = Object.entries(addressOf(key));
  const document = kinds[kind]?.document();
  const record = document?.[`${kind}s`].find((each) => each[kinds[kind].by] === id);
  return record ? itemOf(kind, document, record) : null;
}
/** What is in the list that is open. */
export const listItems = () => Object.keys(kinds).filter((kind) => kinds[kind].list === state.list)
  .flatMap((kind) => itemsOf(kind));

/** Width and height of a font's cells in pixels. */
export const cellOfFont = (number) =>
  state.project?.names.font?.find((font) => font.number === number)?.cell ?? [8, 14];

/** The name of the slot of this screen that shows a text window. */
const nameOfShowing = (number) => screenDocument()?.slots.find((slot) =>
  Object.values(slot.languages).some(({ kind, values }) => kind === 'window' && values.graphic === number))?.name;

/** What can be pointed at on the picture, in the order of drawing. */
export function placedItems() {
  const withWindows = state.list === 'windows' && screenDocument();
  return [...itemsOf('slot'), ...(withWindows ? itemsOf('window') : [])].filter((each) => each.rect);
}

export const selected = () => state.selection.map((key) => item(key)).filter(Boolean);
/** The item whose properties are shown. */
export const lead = () => (state.selection.length ? item(state.selection.at(-1)) : null);

export function select(keys, { look = '' } = {}) {
  const list = [].concat(keys);
  if (look === state.look && list.join('\n') === state.selection.join('\n')) return;
  state.selection = list;
  state.look = look;
  if (list.length) showList(kinds[list.at(-1).split(':')[0]].list);
  tell('selection');
}

export function hover(key) {
  state.hovered = key;
  tell('hovered');
}

/** Adds one to what is chosen, or takes it away. */
export function toggle(key) {
  select(state.selection.includes(key) ? state.selection.filter((each) => each !== key) : [...state.selection, key]);
}

export function showList(name) {
  if (state.list === name) return;
  state.list = name;
  tell('list');
}

/** Slots of the menu that have a help page. */
export function helpSlots() {
  const menu = state.documents.get(viewOf('menu')?.document);
  return (menu?.slots ?? []).filter((each) => each.languages[state.language].values.help_number > 0);
}

/** What a view cannot be drawn without: a module for options, a slot of the menu for help. */
export function completeView() {
  const { modules } = viewOf(state.view) ?? {};
  if (modules && state.module === null) state.module = modules[0]?.number ?? null;
  if (state.view === 'help' && !helpSlots().some((each) => each.index === state.about))
    state.about = helpSlots()[0]?.index ?? null;
}

export function showView(change) {
  const other = change.view && change.view !== state.view;
  Object.assign(state, change);
  completeView();
  if (other) {
    state.selection = [];
    state.look = '';
  }
  tell('view');
  if (other) tell('selection');
}

export function keepWhatIsThere() {
  if (!state.project) return;
  const kept = state.selection.filter((key) => item(key));
  if (kept.length === state.selection.length) return;
  state.selection = kept;
  tell('selection');
}

/** Every fault that is known, those of the documents as they stand first. */
export function allFaults() {
  const own = allDocuments().flatMap((each) =>
    each.faults.map((fault) => ({ ...fault, document: fault.document || each.name })));
  const seen = new Set(own.map(sameFault));
  return own.concat(state.faults.filter((fault) => !seen.has(sameFault(fault))));
}
const sameFault = (fault) => [fault.code, fault.document, fault.slot, fault.field, fault.problem].join('\n');
/** Tells of items whether a fault is in them. */
export function faultFinder() {
  const slots = new Set(allFaults().map((each) => `${each.document}/${each.slot}`));
  return ({ kind, document, index }) => kind === 'slot' && slots.has(`${document.name}/${index}`);
}
