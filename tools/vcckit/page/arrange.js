// Moving and resizing in the units that place a record, aligning and distributing: operations for the server.
import { say } from './dialogs.js';
import { editTogether, settled } from './edits.js';
import { around } from './geometry.js';
import { addressOf, cellOfFont, item, keyOf, lead, SCREEN, selected } from './state.js';
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
  return cellOfFont(Number(each.record.values.font ?? 0));
}

export function canResize(each) {
  const { kind, shown } = movedBy(each);
  return each.key !== BACKGROUND && (kind !== 'slot' || shown.kind === 'picture' || shown.boxed);
}

/**
 * The changes of moves in units: [{item, dx, dy}]. A group of repeated records moves once, by the first
 * distance; of one whose places are a list, those move that share it. So does a text window that several slots show.
 */
export function moveOperations(moves) {
  const wayOf = ({ dx, dy }) => `${dx} ${dy}`;
  const ways = new Map(); // by record or group
  const moved = moves.filter((move) => {
    const { record: { repeat }, key } = move.item;
    const one = repeat ? `group:${repeat.first}` : key;
    if (!ways.has(one) && (move.dx || move.dy)) ways.set(one, wayOf(move));
    return ways.get(one) === wayOf(move);
  });
  return changesOf(moved, (some) => [...Map.groupBy(some, wayOf).values()].map((same) =>
    ({ do: 'move', of: same.map((move) => addressOf(move.item.key)), dx: same[0].dx, dy: same[0].dy })));
}
/** [[name of a document, operations]] for what is to be done with items: [{item, ...}]. */
const changesOf = (all, operations) => [...Map.groupBy(all, (each) => each.item.document.name)]
  .map(([name, some]) => [name, operations(some)]);

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
  const moves = items.map((each) => ({ item: each, dx, dy }));
  editTogether(moveOperations(moves), `Move ${nameOf(items)}`, `nudge ${burst.number}`);
}

/** Alt and an arrow key: wider, narrower, taller, lower by one unit. */
export function grow(dx, dy) {
  const items = movable().filter(canResize);
  if (!items.length) return;
  const changes = changesOf(items.map((each) => ({ item: each })), (some) =>
    some.flatMap((each) => resizeOperations(each.item, { right: dx, bottom: dy })));
  editTogether(changes, `Resize ${nameOf(items)}`, `grow ${items.map((each) => each.key).join()}`);
}

export function movable() {
  const seen = new Set();
  return selected().filter((each) => each.rect).map(movedBy)
    .filter((each) => each.key !== BACKGROUND && !seen.has(each.key) && seen.add(each.key));
}

/**
 * Operations that move the edges of one item by whole units: {left, top, right, bottom}; right and bottom of a text are
 * in pixels, as its box is. A picture's left and top edge cut it at the source as well, so that what stays does not
 * move on the screen.
 */
export function resizeOperations(each, { left = 0, top = 0, right = 0, bottom = 0 }) {
  const of = [addressOf(each.key)];
  const isPicture = isSlotOf(each, 'picture');
  const [width, height] = isPicture ? [0, 0] : isSlotOf(each, 'text') ? unitOf(each) : [1, 1];
  const [dx, dy] = [right - left * width, bottom - top * height];
  return [
    ...(left || top ? [{ do: 'move', of, dx: left, dy: top }] : []),
    ...(isPicture ? [...addTo(each, 'src_x', left), ...addTo(each, 'src_y', top)] : []),
    ...(dx || dy ? [{ do: 'resize', of, dx, dy }] : []),
  ];
}
export const isSlotOf = (each, kind) => each.kind === 'slot' && each.shown.kind === kind;

const set = (of, field, value, language = '') => ({ do: 'set', of, field, language, value });

/** Adds to a field of a slot in every language; where all say the same, the one value stays one. */
function addTo(each, field, by) {
  if (!by) return [];
  const of = [addressOf(each.key)];
  const values = Object.entries(each.record.languages).map(([code, shown]) => [code, shown.values[field]]);
  if (values.every(([, value]) => value === values[0][1])) return [set(of, field, values[0][1] + by)];
  return values.map(([code, value]) => set(of, field, value + by, code));
}

// The direction, and which part of the room that is left lies before each.
const alignments = { left: [0, 0], centre: [0, 0.5], right: [0, 1], top: [1, 0], middle: [1, 0.5], bottom: [1, 1] };

/** What is chosen now, in the places to which earlier changes bring it. */
async function settledItems() {
  const keys = movable().map((each) => each.key);
  await settled();
  return keys.map((key) => item(key)).filter((each) => each?.rect);
}

/** Several align with one another; one alone with the screen. */
export async function align(how) {
  const items = await settledItems();
  const [axis, before] = alignments[how];
  const all = items.length > 1 ? around(items.map((each) => each.rect)) : SCREEN;
  const moves = items.map((each) => {
    const room = all[axis + 2] - each.rect[axis + 2];
    return shift(each, axis, all[axis] + room * before - each.rect[axis]);
  });
  editTogether(moveOperations(moves), `Align ${nameOf(items)}: ${how}`);
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
  editTogether(moveOperations(moves), `Distribute ${nameOf(items)}`);
}

function shift(each, axis, pixels) {
  const units = Math.round(pixels / unitOf(each)[axis]);
  return { item: each, dx: axis ? 0 : units, dy: axis ? units : 0 };
}
