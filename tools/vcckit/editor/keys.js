// All keys in one table: what `?` shows is what works.
import { grow, nudge } from './arrange.js';
import { playNow, saveAll } from './bar.js';
import { showBelow } from './below.js';
import { dialog, isOpen } from './dialogs.js';
import { el, find } from './dom.js';
import { redo, undo } from './edits.js';
import { nextFault } from './faults.js';
import { clamp } from './geometry.js';
import { focusList, focusSearch } from './list.js';
import { zoom, zoomTo } from './picture.js';
import { cancelGesture } from './pointer.js';
import { prefer, preferences } from './preferences.js';
import { copySelected, createSlot, removeSelected, reorder, selectAll, step } from './records.js';
import { select, showView, state } from './state.js';

const toggle = (name) => () => prefer({ [name]: !preferences[name] });
const nextLanguage = () => {
  const codes = state.project.languages.map((each) => each.code);
  showView({ language: codes[(codes.indexOf(state.language) + 1) % codes.length] });
};
const screen = (number) => () => {
  const view = state.project.views[number]?.view;
  if (view) showView({ view });
};
function escape() {
  if (cancelGesture()) return;
  if (state.selection.length) select([]);
  find('viewport').focus();
}

// `where`: "any" works everywhere, "text" not while a text is typed, "picture" only in the picture and its list.
const table = [
  { group: 'Choose' },
  { keys: ['Tab'], shown: 'Tab, Shift+Tab', says: 'next, previous slot', where: 'picture', run: () => step(1) },
  { keys: ['Shift+Tab'], where: 'picture', run: () => step(-1) },
  { keys: ['Ctrl+A'], says: 'all slots but the background', where: 'text', run: selectAll },
  { keys: ['Escape'], says: 'end a drag; choose nothing; back to the picture', where: 'text', run: escape },
  { keys: ['F6'], says: 'from the picture to the list, properties, the list below', where: 'any', run: nextPart },
  { keys: ['Ctrl+F'], says: 'find a slot; Enter goes to the list, then to the picture', where: 'any',
    run: focusSearch },
  { keys: ['Enter'], says: 'to the properties of what is chosen', where: 'picture', run: () => toProperties() },

  { group: 'Move' },
  { keys: ['ArrowLeft'], shown: 'Arrow keys', says: 'one pixel or cell; with Shift ten', where: 'picture',
    run: () => nudge(-1, 0) },
  { keys: ['ArrowRight'], where: 'picture', run: () => nudge(1, 0) },
  { keys: ['ArrowUp'], where: 'picture', run: () => nudge(0, -1) },
  { keys: ['ArrowDown'], where: 'picture', run: () => nudge(0, 1) },
  { keys: ['Shift+ArrowLeft'], where: 'picture', run: () => nudge(-10, 0) },
  { keys: ['Shift+ArrowRight'], where: 'picture', run: () => nudge(10, 0) },
  { keys: ['Shift+ArrowUp'], where: 'picture', run: () => nudge(0, -10) },
  { keys: ['Shift+ArrowDown'], where: 'picture', run: () => nudge(0, 10) },
  { keys: ['Alt+ArrowRight'], shown: 'Alt+Arrow keys', says: 'wider, narrower, taller, lower', where: 'picture',
    run: () => grow(1, 0) },
  { keys: ['Alt+ArrowLeft'], where: 'picture', run: () => grow(-1, 0) },
  { keys: ['Alt+ArrowDown'], where: 'picture', run: () => grow(0, 1) },
  { keys: ['Alt+ArrowUp'], where: 'picture', run: () => grow(0, -1) },
  { keys: ['PageUp'], shown: 'Page Up, Page Down', says: 'forward, backward in the order of drawing', where: 'picture',
    run: () => reorder(1) },
  { keys: ['PageDown'], where: 'picture', run: () => reorder(-1) },

  { group: 'Change' },
  { keys: ['Ctrl+Z'], says: 'undo', where: 'any', run: () => undo() },
  { keys: ['Ctrl+Y', 'Ctrl+Shift+Z'], shown: 'Ctrl+Y', says: 'redo', where: 'any', run: () => redo() },
  { keys: ['Ctrl+S'], says: 'save', where: 'any', run: saveAll },
  { keys: ['N'], says: 'new slot', where: 'text', run: () => createSlot() },
  { keys: ['Ctrl+D'], says: 'copy what is chosen', where: 'any', run: () => copySelected() },
  { keys: ['Delete', 'Backspace'], shown: 'Delete', says: 'delete what is chosen', where: 'text', run: removeSelected },
  { keys: ['F5'], says: 'play: save, and start the program', where: 'any', run: playNow },

  { group: 'See' },
  { keys: ['+', '='], shown: '+, −, 0', says: 'larger, smaller, as large as fits', where: 'text',
    run: () => zoomTo(clamp(zoom + 1, 1, 4)) },
  { keys: ['-'], where: 'text', run: () => zoomTo(clamp(zoom - 1, 1, 4)) },
  { keys: ['0'], where: 'text', run: () => zoomTo(0) },
  { keys: ['G'], says: 'grid of cells', where: 'text', run: toggle('grid') },
  { keys: ['S'], says: 'snapping', where: 'text', run: toggle('snap') },
  { keys: ['F'], says: 'frames', where: 'text', run: toggle('outlines') },
  { keys: ['L'], says: 'other language', where: 'text', run: nextLanguage },
  { keys: ['H'], says: 'the chosen slot with the pointer over it', where: 'text',
    run: () => showView({ preview: state.preview === 'hover' ? 'rest' : 'hover' }) },
  { keys: ['Ctrl+1'], shown: 'Ctrl+1 to 5', says: 'menu, options, help, message, explanations', where: 'any',
    run: screen(0) },
  { keys: ['Ctrl+2'], where: 'any', run: screen(1) },
  { keys: ['Ctrl+3'], where: 'any', run: screen(2) },
  { keys: ['Ctrl+4'], where: 'any', run: screen(3) },
  { keys: ['Ctrl+5'], where: 'any', run: screen(4) },
  { keys: ['F8'], says: 'next fault', where: 'any', run: () => { showBelow('faults'); nextFault(); } },
  { keys: ['F9'], says: 'source', where: 'any', run: () => showBelow('source') },
  { keys: ['?'], says: 'these keys', where: 'text', run: () => showKeys() },
];
const pointerTable = [
  ['Click', 'choose; again at the same place: what lies under it'], ['Shift+Click', 'add or take away'],
  ['Drag', 'move; with Shift along one axis, with Ctrl without snapping, with Alt a copy'],
  ['Drag from the background', 'choose what a band touches'],
  ['Ctrl+Wheel', 'zoom'], ['Space+Drag, middle button', 'move the view'],
];

const byKey = new Map(table.flatMap((row) => (row.keys ?? []).map((key) => [key, row])));

function nameOfKey(event) {
  const letter = event.key.length === 1 ? event.key.toUpperCase() : event.key;
  const shift = event.shiftKey && (event.key.length > 1 || event.ctrlKey);
  return [(event.ctrlKey || event.metaKey) && 'Ctrl+', event.altKey && 'Alt+', shift && 'Shift+', letter]
    .filter(Boolean).join('');
}

const typing = (element) => element.matches('textarea, input:not([type="checkbox"])');

function allowed(where, target) {
  if (where === 'any') return true;
  if (where === 'picture') return find('viewport').contains(target) || target === document.body;
  return !typing(target) && !(target.matches('select'));
}

addEventListener('keydown', (event) => {
  if (isOpen() || event.defaultPrevented) return;
  const row = byKey.get(nameOfKey(event));
  if (!row || !allowed(row.where, event.target)) return;
  if (row.where === 'any' && typing(event.target) && ['Ctrl+Z', 'Ctrl+Y'].includes(row.keys[0]) &&
    event.target.dataset.typing) return; // the field's own undo, while it is being typed in
  event.preventDefault();
  row.run();
});

const parts = [() => find('viewport').focus(), focusList, () => toProperties(), () =>
  find('below').querySelector('.below-head button[tabindex="0"]')?.focus()];
function nextPart() {
  const here = [find('viewport'), find('items'), find('properties'), find('below')]
    .findIndex((part) => part.contains(document.activeElement));
  parts[(here + 1) % parts.length]();
}
function toProperties() {
  const fields = find('properties');
  (fields.querySelector('[data-first]') ?? fields.querySelector('input, select, button'))?.focus();
}

export function showKeys() {
  const row = (keys, says) => el('tr', {}, el('td', {}, keys.split(', ').map((key, i) =>
    [i ? ' ' : '', el('kbd', {}, key)])), el('td', {}, says));
  const groups = [];
  for (const each of table) {
    if (each.group) groups.push(el('table', {}, el('caption', {}, each.group)));
    else if (each.says) groups.at(-1).append(row(each.shown ?? each.keys[0], each.says));
  }
  const mouse = pointerTable.map(([what, says]) => row(what, says));
  groups.push(el('table', {}, el('caption', {}, 'With the mouse'), mouse));
  dialog('Keys', el('div', { class: 'keys' }, groups), undefined, { wide: true });
}
