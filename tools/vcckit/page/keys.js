// Keys do what the table of commands says; `?` shows it.
import { commands, keysOf } from './commands.js';
import { dialog, isOpen } from './dialogs.js';
import { el, find } from './dom.js';

const pointerTable = [
  ['Click', 'choose'], ['Ctrl+Click', 'choose what lies under it'], ['Shift+Click', 'add or take away'],
  ['Drag', 'move; with Shift along one axis, with Ctrl without snapping, with Alt a copy'],
  ['Drag from the background', 'choose what a band touches'],
  ['Ctrl+Wheel', 'zoom'], ['Space+Drag, middle button', 'move the view'],
];

const byKey = new Map(commands.flatMap((row) => (row.keys ?? []).map((key) => [key, row])));

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
  const key = nameOfKey(event);
  const row = byKey.get(key);
  if (!row || !allowed(row.where, event.target)) return;
  if (['undo', 'redo'].includes(row.id) && typing(event.target) && event.target.dataset.typing)
    return; // the field's own undo, while it is being typed in
  if (row.run(key) !== false) event.preventDefault();
});

document.addEventListener('show-keys', () => {
  const row = (keys, says) => el('tr', {}, el('td', {}, keys.split(', ').map((key, i) =>
    [i ? ' ' : '', el('kbd', {}, key)])), el('td', {}, says));
  const groups = [];
  for (const each of commands) {
    if (each.group) groups.push(el('table', {}, el('caption', {}, each.group)));
    if (each.keys) groups.at(-1).append(row(keysOf(each), each.title));
  }
  const mouse = pointerTable.map(([what, says]) => row(what, says));
  groups.push(el('table', {}, el('caption', {}, 'With the mouse'), mouse));
  dialog('Keys', el('div', { class: 'keys' }, groups), undefined, { wide: true });
});
