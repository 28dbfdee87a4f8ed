// Records as wholes: new, copy, paste, remove, draw order. Numbers are chosen here; the server says what is not
// allowed.
import { getJson } from './api.js';
import { unitOf } from './arrange.js';
import { chooseBuffer } from './buffer_chooser.js';
import { dialog, say } from './dialogs.js';
import { el } from './dom.js';
import { edit, editTogether } from './edits.js';
import { isBackground } from './frames.js';
import { meets } from './geometry.js';
import { addressOf, buffersDocument, itemsOf, keyOf, lead, listItems, placedItems, screenDocument, select, selected,
  shownOf, state, tell, windowsDocuments } from './state.js';
import { lookRecord, nameOf } from './values.js';

const LAST = 199;
const LAST_WINDOW = 29;
const LAST_BUFFER = 20; // the others are the program's

const usedNumbers = () => new Set([...itemsOf('slot'), ...itemsOf('toggle')].map((each) => each.index));
const usedWindows = () => new Set(windowsDocuments().flatMap((one) => one.windows.map((each) => each.number)));

/** A number that is not in `used`, and added to it; behind the others where there is one; null when all are in use. */
function free(used, last) {
  const found = [Math.max(0, ...used) + 1, ...Array(last + 1).keys()]
    .find((index) => index > 0 && index <= last && !used.has(index)) ?? null;
  if (found === null) say(`All numbers up to ${last} are in use.`, 'bad');
  else used.add(found);
  return found;
}

/** Copies what is chosen to free numbers behind the last one, moved by pixels, and chooses the copies. */
export async function copySelected({ by = [8, 8], merge = '' } = {}) {
  const kind = lead()?.kind;
  const items = selected().filter((each) => each.kind === kind);
  if (!['slot', 'window'].includes(kind)) return;
  const [used, last] = kind === 'window' ? [usedWindows(), LAST_WINDOW] : [usedNumbers(), LAST];
  const operations = [];
  const copies = [];
  for (const each of items) {
    const to = free(used, last);
    if (to === null) return;
    copies.push(keyOf(kind, to));
    operations.push({ do: 'copy', of: [addressOf(each.key)], to });
    const [w, h] = unitOf(each);
    if (by[0] || by[1])
      operations.push({ do: 'move', of: [{ [kind]: to }], dx: Math.ceil(by[0] / w), dy: Math.ceil(by[1] / h) });
  }
  if (await edit(items[0].document.name, `Copy ${nameOf(items)}`, operations, merge)) select(copies);
}

const text = 'font = "bold_14"\nfore_colour = "white"\ntext = { en = "Text", de = "Text" }\n';
/** That of another picture of the screen, else the last one that there is. */
const usualBuffer = () => screenDocument().slots.filter((each) => each.index > 0).map(shownOf)
  .find((shown) => shown.kind === 'picture')?.values.buffer ??
  state.project.names.buffer.at(-1).number;
const middle = 'dest_x = 360\ndest_y = 290\n';
const blanks = {
  text: () => `${text}${middle}toggle = "inert"\n`,
  button: () => `${text}${middle}highlight = { fore_colour = "yellow" }\n`,
  picture: () => `graphic = 1\nbuffer = ${usualBuffer()}\nbox_width = 100\nbox_height = 50\n${middle}` +
    'toggle = "inert"\n',
};

/** A new slot in the middle of the picture, ready to be typed into; of a picture its piece is chosen. */
export async function createSlot(kind) {
  if (!await createRecords([{ source: blanks[kind]() }], `New ${kind}`)) return;
  if (kind === 'picture') chooseBuffer(selected());
  else tell('field', 'text');
}

/** A new text window, and a slot that shows it. */
export const createWindow = () =>
  createRecords([{ source: showsWindow, windows: [{ text: blankWindow }] }], 'New text window');
const blankWindow = 'w1\nxo300\nyo200\nxu500\nyu400\n-1\nh140\n';
const showsWindow = 'graphic = 0\ntext = "TEXT-WIN"\ntoggle = "inert"\n';

/**
 * New slots of the shown screen as one step, and chosen; tells whether they were made. Records are {source, windows}:
 * `windows` has the lines of the text window that a slot shows, by the name of a file where files differ; it gets a
 * number that is free in all of them.
 */
async function createRecords(records, label) {
  const [used, windowsUsed] = [usedNumbers(), usedWindows()];
  const changes = new Map(windowsDocuments().map(({ name }) => [name, []]));
  const slots = [];
  for (const { source, windows } of records) {
    const to = free(used, LAST);
    const number = windows ? free(windowsUsed, LAST_WINDOW) : 0;
    if (to === null || number === null) return false;
    slots.push({ do: 'create', to, text: windows ? source.replace(/^graphic = .*/m, `graphic = ${number}`) : source });
    for (const { text, name } of windows ?? []) {
      for (const [file, operations] of changes)
        if (!name || name === file) operations.push({ do: 'create', to: number, text });
    }
  }
  changes.set(screenDocument().name, slots);
  if (!await editTogether(changes, label)) return false;
  select(slots.map(({ to }) => keyOf('slot', to)));
  return true;
}

/** A graphic buffer with a picture that slots can show from then on. */
export function createBuffer() {
  const buffers = buffersDocument();
  if (!buffers) return void say('The installation has no buffer list, tools/vcc.buf.', 'bad');
  const used = new Set(buffers.buffers.map((each) => each.values.picture));
  const name = el('input', { type: 'text', 'aria-label': 'Picture', list: 'pictures', spellcheck: false, size: 30,
    value: state.project.pictures.find((each) => !used.has(each)) ?? '',
    on: { keydown: async (event) => { if (event.key === 'Enter' && await make()) close(); } } });
  async function make() {
    const to = free(new Set(buffers.buffers.map((each) => each.number)), LAST_BUFFER);
    const done = to !== null && await edit(buffers.name, `New buffer ${to}`, [{ do: 'create', to, text: name.value }]);
    if (!done) return false;
    state.project.names = (await getJson('project')).names; // slots can show it
    select(keyOf('buffer', to));
    return true;
  }
  const close = dialog('New buffer', el('p', {}, 'A PCX picture of the installation; slots show pieces of it: ', name),
  [{ label: 'Cancel' }, { label: 'Make it', primary: true, run: make }]);
  name.focus();
  name.select();
}

// from screen to screen

let taken = [];

/** A record as a source writes it without styles and names of its screen; `base` has what need not be said. */
function written(values, base) {
  const codes = Object.keys(values);
  const text = (value) => JSON.stringify(value);
  return Object.keys(values[codes[0]]).filter((field) => codes.some((code) =>
    values[code][field] !== base(code, field)) && !['toggle', 'activated'].includes(field)).map((field) => {
    const [first, ...others] = codes.map((code) => text(values[code][field]));
    return `${field} = ${others.every((each) => each === first) ? first
      : `{ ${codes.map((code) => `${code} = ${text(values[code][field])}`).join(', ')} }`}`;
  });
}
const valuesOf = (record) => Object.fromEntries(Object.entries(record.languages).map(([code, { values }]) =>
  [code, values]));

function sourceOf(each) {
  const own = valuesOf(each.record);
  const { toggle } = each.shown.values;
  const lines = written(own, (code, field) => (typeof own[code][field] === 'number' ? 0 : ''));
  for (const look of each.record.looks) {
    const record = lookRecord(each, look);
    if (record) lines.push(`${look} = { ${written(valuesOf(record), (code, field) => own[code][field]).join(', ')} }`);
  }
  return [...lines, each.record.looks.includes('highlight') ? '' : `toggle = ${toggle}`, ''].join('\n');
}

/** A text window's lines in each file that has it: [{name, text}]; null for none. */
function windowSources(number) {
  const sources = windowsDocuments().flatMap(({ name, windows }) => windows.filter((each) => each.number === number)
    .map(({ values: { title, ...values } }) => ({ name, text: state.project.window_fields
      .filter((field) => field.name in values).map((field) => `${field.key}${values[field.name]}\n`).join('') +
      (title ? `${title}\n` : '') })));
  return sources.length ? sources : null;
}

/** Keeps the chosen slots and text windows for paste(), which puts them into the screen that is shown then. */
export function take() {
  const items = selected().filter((each) => ['slot', 'window'].includes(each.kind));
  if (!items.length) return false;
  taken = items.map((each) => {
    const isWindow = each.kind === 'window';
    const shows = isWindow ? each.index : each.shown.kind === 'window' && each.shown.values.graphic;
    return { source: isWindow ? showsWindow : sourceOf(each), windows: shows ? windowSources(shows) : null };
  });
  say(`${nameOf(items)} copied; Ctrl+V puts it into the screen that is shown.`);
  return true;
}
export function paste() {
  if (taken.length) createRecords(taken, 'Paste');
  else say('Nothing was copied yet.');
}

export async function removeSelected() {
  const items = selected().filter((each) => each.kind !== 'style');
  if (!items.length) return;
  const held = items.find((each) => each.record.protected);
  if (held)
    return void say(`${nameOf([held])} stays: the program knows it as the ${held.record.protected}. ` +
      'To take a slot from sight, set "hidden".', 'bad');
  await edit(items[0].document.name, `Delete ${nameOf(items)}`, [{ do: 'remove', of: items.map(({ key }) =>
    addressOf(key)) }]);
}

export async function renumber(each, to) {
  if (!Number.isInteger(to) || to === each.index) return;
  if (await edit(each.document.name, `Renumber slot ${each.index} to ${to}`,
    [{ do: 'renumber', of: [addressOf(each.key)], to }])) select(keyOf(each.kind, to));
}

export function split(each) {
  return edit(each.document.name, `Write out slots from ${each.record.repeat.first}`,
    [{ do: 'split', of: [{ slot: each.index }] }]);
}

/**
 * Slots are drawn in the order of their numbers. Forward: a free number above the next slot that overlaps this one;
 * where there is none, the two change places. Slot 0 is the background of every screen and stays below.
 */
export async function reorder(direction) {
  const each = lead();
  if (each?.kind !== 'slot' || each.index === 0) return;
  if (each.record.protected)
    return void say(`Slot ${each.index} keeps its number, and with it its place in the order: the program knows it ` +
      `as the ${each.record.protected}.`, 'bad');
  const [next, second] = itemsOf('slot').filter((other) => other.index > 0 &&
    direction * (other.index - each.index) > 0 && meets(other.rect, each.rect))
    .sort((a, b) => direction * (a.index - b.index));
  if (!next)
    return void say(direction > 0 ? 'No slot covers this one.' : 'This one covers nothing but the background.');
  const used = usedNumbers();
  const bound = second?.index ?? (direction > 0 ? LAST + 1 : 0);
  for (let to = next.index + direction; to !== bound && to > 0 && to <= LAST; to += direction)
    if (!used.has(to)) return void await renumber(each, to);
  const spare = free(used, LAST);
  if (next.record.protected)
    return void say(`Slot ${next.index} keeps its number: ${next.record.protected}.`, 'bad');
  if (spare === null) return;
  const step = (from, to) => ({ do: 'renumber', of: [{ slot: from }], to });
  if (await edit(each.document.name, `Slots ${each.index} and ${next.index} change places`,
    [step(each.index, spare), step(next.index, each.index), step(spare, next.index)]))
    select(keyOf('slot', next.index));
}

/** The next or previous item of the list; false behind the last one, where the focus goes on. */
export function step(direction) {
  const keys = listItems().map((each) => each.key);
  const at = keys.indexOf(state.selection.at(-1));
  const next = at < 0 && direction < 0 ? keys.length - 1 : at + direction;
  if (!keys[next]) return false;
  select(keys[next]);
  return true;
}

/** Makes the source of what is shown as it is installed. */
export function takeOver({ name, text: base }) {
  return edit(name, 'Take the source over', [{ do: 'replace_text', base,
    text: `# Taken from what was installed.\n${base.startsWith('\n') ? '' : '\n'}${base}` }]);
}

export const selectAll = () => select(placedItems().filter((each) => each.kind === 'slot' && !isBackground(each.rect))
  .map((each) => each.key));
