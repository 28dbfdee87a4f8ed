// All that can be done, in one table: buttons, tooltips, keys and the list of keys come from here.
import { align, distribute, grow, nudge } from './arrange.js';
import { el, find, iconButton } from './dom.js';
import { playNow, redo, saveAll, undo } from './edits.js';
import { showBelow } from './below.js';
import { nextFault } from './faults.js';
import { clamp } from './geometry.js';
import { focusList, focusSearch } from './list.js';
import { zoom, zoomTo } from './picture.js';
import { cancelGesture } from './pointer.js';
import { isDark, prefer, preferences } from './preferences.js';
import { focusProperties } from './properties.js';
import { copySelected, createSlot, removeSelected, reorder, selectAll, step } from './records.js';
import { select, showView, state } from './state.js';

const toggle = (name) => () => prefer({ [name]: !preferences[name] });
function nextLanguage() {
  const codes = state.project.languages.map((each) => each.code);
  showView({ language: codes[(codes.indexOf(state.language) + 1) % codes.length] });
}
function showScreen(key) {
  const view = state.project.views[Number(key.at(-1)) - 1]?.view;
  if (view) showView({ view });
}
const ways = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };
const wayOf = (key, by = 1) => ways[key.split('+').at(-1)].map((part) => part * by);
const arrows = (changed) => Object.keys(ways).map((key) => `${changed}${key}`);
function escape() {
  if (cancelGesture()) return;
  if (state.selection.length) select([]);
  find('viewport').focus();
}
/** From part to part of the page; one that has nothing to focus is passed over. */
function nextPart() {
  const parts = [['viewport', () => find('viewport').focus()], ['items', focusList], ['properties', focusProperties],
    ['below', () => find('below').querySelector('.below-head button[tabindex="0"]')?.focus()]];
  const here = parts.findIndex(([id]) => find(id).contains(document.activeElement));
  for (let i = 1; i <= parts.length; i += 1) {
    const [id, focus] = parts[(here + i + parts.length) % parts.length];
    focus();
    if (find(id).contains(document.activeElement)) return;
  }
}

// `where`: "any" works everywhere, "text" not while a text is typed, "picture" only in the picture. `run` gets the key,
// and says false when the browser shall do what it does. Without `keys` there is only a button.
export const commands = [
  { id: 'step', group: 'Choose', title: 'Next, previous slot; behind the last one out of the picture',
    keys: ['Tab', 'Shift+Tab'], where: 'picture', run: (key) => step(key === 'Tab' ? 1 : -1) },
  { id: 'all', title: 'All slots but the background', keys: ['Ctrl+A'], where: 'text', run: selectAll },
  { id: 'escape', title: 'End a drag; choose nothing; back to the picture', keys: ['Escape'], where: 'text',
    run: escape },
  { id: 'part', title: 'From the picture to the list, properties, the list below', keys: ['F6'], where: 'any',
    run: nextPart },
  { id: 'find', title: 'Find a slot; Enter goes to the list, then to the picture', keys: ['Ctrl+F'], where: 'any',
    run: focusSearch },
  { id: 'properties', title: 'To the properties of what is chosen', keys: ['Enter'], where: 'picture',
    run: focusProperties },

  { id: 'nudge', group: 'Move', title: 'One pixel or cell', shown: 'Arrow keys', keys: arrows(''), where: 'picture',
    run: (key) => nudge(...wayOf(key)) },
  { id: 'nudge10', title: 'Ten pixels or cells', shown: 'Shift+Arrow keys', keys: arrows('Shift+'), where: 'picture',
    run: (key) => nudge(...wayOf(key, 10)) },
  { id: 'grow', title: 'Wider, narrower, taller, lower', shown: 'Alt+Arrow keys', keys: arrows('Alt+'),
    where: 'picture', run: (key) => grow(...wayOf(key)) },
  { id: 'forward', title: 'Forward: drawn later', keys: ['PageUp'], where: 'picture', run: () => reorder(1) },
  { id: 'backward', title: 'Backward: drawn earlier', keys: ['PageDown'], where: 'picture', run: () => reorder(-1) },
  ...['left', 'centre', 'right', 'top', 'middle', 'bottom'].map((how) =>
    ({ id: how, title: `Align ${how}`, run: () => align(how) })),
  { id: 'across', title: 'Same gaps across', run: () => distribute(0) },
  { id: 'down', title: 'Same gaps down', run: () => distribute(1) },

  { id: 'undo', group: 'Change', title: 'Undo', keys: ['Ctrl+Z'], where: 'any', run: () => undo() },
  { id: 'redo', title: 'Redo', keys: ['Ctrl+Y', 'Ctrl+Shift+Z'], where: 'any', run: () => redo() },
  { id: 'save', title: 'Save', keys: ['Ctrl+S'], where: 'any', run: saveAll },
  { id: 'new', icon: 'text', title: 'New slot', keys: ['N'], where: 'text', run: () => createSlot() },
  { id: 'copy', title: 'Copy what is chosen', keys: ['Ctrl+D'], where: 'any', run: () => copySelected() },
  { id: 'remove', title: 'Delete what is chosen', keys: ['Delete', 'Backspace'], where: 'text', run: removeSelected },
  { id: 'play', title: 'Save, and start the program', keys: ['F5'], where: 'any', run: playNow },

  { id: 'plus', group: 'See', title: 'Larger', keys: ['+', '='], where: 'text',
    run: () => zoomTo(clamp(zoom + 1, 1, 4)) },
  { id: 'minus', title: 'Smaller', keys: ['-'], where: 'text', run: () => zoomTo(clamp(zoom - 1, 1, 4)) },
  { id: 'fit', title: 'As large as fits', keys: ['0'], where: 'text', run: () => zoomTo(0) },
  { id: 'grid', title: 'Grid of cells', keys: ['G'], where: 'text', run: toggle('grid') },
  { id: 'snap', title: 'Snap to edges, or to the grid while it is shown', keys: ['S'], where: 'text',
    run: toggle('snap') },
  { id: 'outlines', title: 'Frames of all slots', keys: ['F'], where: 'text', run: toggle('outlines') },
  { id: 'labels', title: 'Numbers and names of all slots', run: toggle('labels') },
  { id: 'unseen', title: 'Hidden slots too', run: toggle('unseen') },
  { id: 'language', title: 'Other language', keys: ['L'], where: 'text', run: nextLanguage },
  { id: 'hover', title: 'The chosen slot with the pointer over it', keys: ['H'], where: 'text',
    run: () => showView({ preview: state.preview === 'hover' ? 'rest' : 'hover' }) },
  { id: 'screen', title: 'Menu, options, help, message, explanations', shown: 'Ctrl+1 to 5',
    keys: [1, 2, 3, 4, 5].map((number) => `Ctrl+${number}`), where: 'any', run: showScreen },
  { id: 'fault', title: 'Next fault', keys: ['F8'], where: 'any', run: () => { showBelow('faults'); nextFault(); } },
  { id: 'source', title: 'Source', keys: ['F9'], where: 'any', run: () => showBelow('source') },
  { id: 'day', title: 'Light or dark', run: () => prefer({ theme: isDark() ? 'light' : 'dark' }) },
  { id: 'keys', title: 'Keys', keys: ['?'], where: 'text', run: () => document.dispatchEvent(new Event('show-keys')) },
];

const byId = new Map(commands.map((each) => [each.id, each]));
export const keysOf = ({ shown, keys }) => shown ?? keys?.filter((key) => key !== '=').slice(0, 2).join(', ') ?? '';
export function hintOf(id) {
  const keys = keysOf(byId.get(id));
  return keys ? `${byId.get(id).title} (${keys})` : byId.get(id).title;
}
export const runCommand = (id) => byId.get(id).run('');
export const commandIcon = (id) => iconButton(byId.get(id).icon ?? id, hintOf(id), () => runCommand(id));
export const commandButton = (id, properties, ...children) => el('button', { type: 'button', title: hintOf(id),
  on: { click: () => runCommand(id) }, ...properties }, ...children);
