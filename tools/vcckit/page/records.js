// Records as wholes: new, copy, remove, draw order. Numbers are chosen here, the server says what is not allowed.
import { edit } from './edits.js';
import { meets } from './geometry.js';
import { say } from './messages.js';
import { item, keyOf, lead, screenDocument, select, selected, state, windowsDocument } from './state.js';

const LAST = 199;

function usedNumbers() {
  const document = screenDocument();
  return new Set([...document.slots, ...ownToggles()].map((each) => each.index));
}

/** The first number above `from` that no record has; null when there is none up to 199. */
function freeAbove(from, used) {
  for (let index = from + 1; index <= LAST; index += 1) if (!used.has(index)) return index;
  return null;
}
const highest = () => Math.max(-1, ...screenDocument().slots.map((each) => each.index));

const chosenSlots = () => selected().filter((each) => each.kind === 'slot');
const addressOf = (each) => ({ [each.kind]: each.index });

function full() {
  say('All numbers up to 199 are in use.', 'bad');
  return null;
}

/** Copies what is chosen to free numbers behind the last one, moved by pixels, and chooses the copies. */
export async function copySelected({ by = [8, 8], merge = '' } = {}) {
  const items = chosenSlots();
  if (!items.length) return;
  const used = usedNumbers();
  const operations = [];
  const copies = [];
  for (const each of items) {
    const to = freeAbove(highest(), used) ?? freeAbove(0, used);
    if (to === null) return full();
    used.add(to);
    copies.push(keyOf('slot', to));
    operations.push({ do: 'copy', of: [{ slot: each.index }], to });
    const [w, h] = each.shown.placed === 'cells' ? each.shown.cell : [1, 1];
    if (by[0] || by[1])
      operations.push({ do: 'move', of: [{ slot: to }], dx: Math.ceil(by[0] / w), dy: Math.ceil(by[1] / h) });
  }
  const name = items.length === 1 ? `slot ${items[0].index}` : `${items.length} slots`;
  if (await edit(items[0].document.name, `Copy ${name}`, operations, merge)) select(copies);
}

/** A new text slot in the middle of the picture or at a place. */
export async function createSlot(at = [360, 290]) {
  const document = screenDocument();
  const to = freeAbove(highest(), usedNumbers()) ?? freeAbove(0, usedNumbers());
  if (to === null) return full();
  const text = ['font = "bold_14"', 'fore_colour = "white"', `dest_x = ${at[0]}`, `dest_y = ${at[1]}`,
    'text = { en = "Text", de = "Text" }', 'toggle = "inert"', ''].join('\n');
  if (await edit(document.name, `New slot ${to}`, [{ do: 'create', to, text }])) select(keyOf('slot', to));
}

export async function removeSelected() {
  const items = selected().filter((each) => each.kind === 'slot' || each.kind === 'toggle');
  if (!items.length) return;
  const held = items.filter((each) => each.record.protected);
  if (held.length) {
    say(`Slot ${held[0].index} stays: the program knows it as the ${held[0].record.protected}. ` +
      'To take it from sight, set "hidden".', 'bad');
    return;
  }
  const name = items.length === 1 ? `${items[0].kind} ${items[0].index}` : `${items.length} slots`;
  await edit(items[0].document.name, `Delete ${name}`, [{ do: 'remove', of: items.map(addressOf) }]);
}

export async function renumber(each, to) {
  if (!Number.isInteger(to) || to === each.index) return;
  if (await edit(each.document.name, `Renumber slot ${each.index} to ${to}`,
    [{ do: 'renumber', of: [addressOf(each)], to }])) select(keyOf(each.kind, to));
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
  if (each.record.protected) {
    say(`Slot ${each.index} keeps its number, and with it its place in the order: the program knows it as the ` +
      `${each.record.protected}.`, 'bad');
    return;
  }
  const others = screenDocument().slots.map((slot) => item(keyOf('slot', slot.index)))
    .filter((other) => other.index > 0 && direction * (other.index - each.index) > 0 && meets(other.rect, each.rect))
    .sort((a, b) => direction * (a.index - b.index));
  const next = others[0];
  if (!next) {
    say(direction > 0 ? 'No slot covers this one.' : 'This one covers nothing but the background.');
    return;
  }
  const used = usedNumbers();
  const bound = others[1]?.index ?? (direction > 0 ? LAST + 1 : 0);
  for (let to = next.index + direction; to !== bound && to > 0 && to <= LAST; to += direction)
    if (!used.has(to)) return void await renumber(each, to);
  const spare = freeAbove(highest(), used) ?? freeAbove(0, used);
  if (next.record.protected || spare === null) {
    say(next.record.protected ? `Slot ${next.index} keeps its number: ${next.record.protected}.` : 'No number is free.',
      'bad');
    return;
  }
  const step = (from, to) => ({ do: 'renumber', of: [{ slot: from }], to });
  if (await edit(each.document.name, `Slots ${each.index} and ${next.index} change places`,
    [step(each.index, spare), step(next.index, each.index), step(spare, next.index)]))
    select(keyOf('slot', next.index));
}

/** The next or previous item of the list; false behind the last one, where the focus goes on. */
export function step(direction) {
  const keys = listKeys();
  const at = keys.indexOf(state.selection.at(-1));
  const next = at < 0 && direction < 0 ? keys.length - 1 : at + direction;
  if (!keys[next]) return false;
  select(keys[next]);
  return true;
}

export function listKeys() {
  const document = screenDocument();
  if (!document) return [];
  if (state.list === 'styles') return document.styles.map((each) => keyOf('style', each.name));
  if (state.list === 'windows') return windowKeys();
  const slots = [...document.slots].sort((a, b) => a.index - b.index).map((each) => keyOf('slot', each.index));
  return slots.concat(ownToggles().map((each) => keyOf('toggle', each.index)));
}
function windowKeys() {
  const windows = [...(windowsDocument()?.windows ?? [])];
  return windows.sort((a, b) => a.number - b.number).map((each) => keyOf('window', each.number));
}
/** Toggle records with a table of their own; the looks of slots are shown with their slots. */
function ownToggles() {
  return screenDocument().toggles.filter((each) => each.line > 0);
}

export const selectAll = () => select(listKeys().filter((key) => key.startsWith('slot:') && !isWhole(key)));
const isWhole = (key) => {
  const rect = item(key)?.rect;
  return !rect || rect[2] * rect[3] >= 800 * 600 * 0.9;
};
