// Moving and resizing in the units that place a record, aligning and distributing: operations for the server.
import { edit, editTogether, settled } from './edits.js';
import { around } from './geometry.js';
import { say } from './messages.js';
import { addressOf, item, keyOf, lead, selected, state } from './state.js';
import { nameOf } from './values.js';

export const BACKGROUND = 'slot:0'; // stays below all others, and where it is

/** What a gesture on an item really moves: a slot that shows a text window moves the window. */
export function movedBy(each) {
  if (each.kind !== 'slot' || each.shown.kind !== 'window') return each;
  return item(keyOf('window', each.shown.values.graphic)) ?? each;
}

/** Pixels of one unit of an item's place, across and down. */
export function unitOf(each) {
  if (each.kind === 'slot') return each.shown.placed === 'cells' ? each.shown.cell : [1, 1];
  if (Number(each.record.values.pixels)) return [1, 1];
  const font = Number(each.record.values.font ?? 0);
  return state.project.names.font.find((one) => one.number === font)?.cell ?? [8, 14];
}

export function canResize(each) {
  const { kind, shown } = movedBy(each);
  return each.key !== BACKGROUND && (kind !== 'slot' || shown.kind === 'picture' || shown.boxed);
}

/**
 * Operations by document for moves in units: [{item, dx, dy}]. A group of repeated records moves once, by the first
 * distance; of one whose places are a list, those move that share it. So does a text window that several slots show.
 */
export function moveOperations(moves, what = 'move') {
  const documents = new Map();
  const operationOf = new Map();
  for (const { item: each, dx, dy } of moves) {
    if (!dx && !dy) continue;
    const { repeat } = each.record;
    const one = repeat ? `group:${repeat.first}` : each.key;
    const list = documents.get(each.document.name) ?? [];
    const alike = (operation) => operation.dx === dx && operation.dy === dy;
    let operation = operationOf.get(one) ?? list.find(alike);
    if (!operation) list.push(operation = { do: what, of: [], dx, dy });
    operationOf.set(one, operation);
    documents.set(each.document.name, list);
    if (alike(operation)) operation.of.push(addressOf(each.key));
  }
  return documents;
}

export function send(documents, label, merge = '') {
  const changes = [...documents];
  return changes.length > 1 ? editTogether(changes, label, merge)
    : Promise.all(changes.map(([name, operations]) => edit(name, label, operations, merge)));
}

let burst = { key: '', at: 0, number: 0 };
/** Arrow keys: one unit each; presses that follow one another quickly are one step of undo. */
export function nudge(dx, dy) {
  const items = movable();
  if (!items.length && lead()?.key === BACKGROUND)
    say('The background stays; its place can be typed in the properties.');
  if (!items.length) return;
  const key = items.map((each) => each.key).join();
  const now = performance.now();
  if (key !== burst.key || now - burst.at > 1000) burst = { key, number: burst.number + 1 };
  burst.at = now;
  const documents = moveOperations(items.map((each) => ({ item: each, dx, dy })));
  send(documents, `Move ${nameOf(items)}`, `nudge ${burst.number}`);
}

/** Alt and an arrow key: wider, narrower, taller, lower by one unit. */
export function grow(dx, dy) {
  const items = movable().filter(canResize);
  if (!items.length) return;
  const documents = new Map();
  for (const each of items) {
    const list = documents.get(each.document.name) ?? [];
    list.push(...resizeOperations(each, { right: dx, bottom: dy }));
    documents.set(each.document.name, list);
  }
  send(documents, `Resize ${nameOf(items)}`, `grow ${items.map((each) => each.key).join()}`);
}

export function movable() {
  const seen = new Set();
  return selected().filter((each) => each.rect).map(movedBy)
    .filter((each) => each.key !== BACKGROUND && !seen.has(each.key) && seen.add(each.key));
}

/**
 * Operations that move the edges of one item by whole units: {left, top, right, bottom}. A picture's left and top edge
 * cut it at the source as well, so that what stays does not move on the screen.
 */
export function resizeOperations(each, { left = 0, top = 0, right = 0, bottom = 0 }) {
  const of = [addressOf(each.key)];
  const operations = [];
  if (left || top) operations.push({ do: 'move', of, dx: left, dy: top });
  if (each.kind === 'slot' && each.shown.kind === 'picture') {
    operations.push(...addTo(each, 'src_x', left), ...addTo(each, 'src_y', top));
    if (right || bottom) operations.push({ do: 'resize', of, dx: right, dy: bottom });
    return operations;
  }
  if (each.kind === 'slot' && each.shown.kind === 'text') {
    const unit = unitOf(each); // boxes are in pixels
    const [dx, dy] = [right - left * unit[0], bottom - top * unit[1]];
    if (dx || dy) operations.push({ do: 'resize', of, dx, dy });
    return operations;
  }
  if (right - left || bottom - top) operations.push({ do: 'resize', of, dx: right - left, dy: bottom - top });
  return operations;
}

const set = (of, field, value, language = '') => ({ do: 'set', of, field, language, value });

/** Adds to a field of a slot in every language; where all say the same, the one value stays one. */
function addTo(each, field, by) {
  if (!by) return [];
  const of = [addressOf(each.key)];
  const values = Object.entries(each.record.languages).map(([code, shown]) => [code, shown.values[field]]);
  if (values.every(([, value]) => value === values[0][1])) return [set(of, field, values[0][1] + by)];
  return values.map(([code, value]) => set(of, field, value + by, code));
}

const ways = {
  left: { axis: 0, to: (rect, all) => all[0] },
  centre: { axis: 0, to: (rect, all) => all[0] + (all[2] - rect[2]) / 2 },
  right: { axis: 0, to: (rect, all) => all[0] + all[2] - rect[2] },
  top: { axis: 1, to: (rect, all) => all[1] },
  middle: { axis: 1, to: (rect, all) => all[1] + (all[3] - rect[3]) / 2 },
  bottom: { axis: 1, to: (rect, all) => all[1] + all[3] - rect[3] },
};
const screen = [0, 0, 800, 600];

/** What is chosen now, in the places to which earlier changes bring it. */
async function settledItems() {
  const keys = movable().map((each) => each.key);
  await settled();
  return keys.map(item).filter((each) => each?.rect);
}

/** Several align with one another; one alone with the screen. */
export async function align(how) {
  const items = await settledItems();
  const { axis, to } = ways[how];
  const all = items.length > 1 ? around(items.map((each) => each.rect)) : screen;
  const moves = items.map((each) => shift(each, axis, to(each.rect, all) - each.rect[axis]));
  send(moveOperations(moves), `Align ${nameOf(items)}: ${how}`);
}

/** The same gaps between three or more, the outer ones stay. */
export async function distribute(axis) {
  const items = (await settledItems()).sort((a, b) => a.rect[axis] - b.rect[axis]);
  if (items.length < 3) return;
  const all = around(items.map((each) => each.rect));
  const gap = (all[axis + 2] - items.reduce((sum, each) => sum + each.rect[axis + 2], 0)) / (items.length - 1);
  let at = all[axis];
  const moves = items.map((each) => {
    const move = shift(each, axis, at - each.rect[axis]);
    at += each.rect[axis + 2] + gap;
    return move;
  });
  send(moveOperations(moves), `Distribute ${nameOf(items)}`);
}

function shift(each, axis, pixels) {
  const units = Math.round(pixels / unitOf(each)[axis]);
  return { item: each, dx: axis ? 0 : units, dy: axis ? units : 0 };
}

