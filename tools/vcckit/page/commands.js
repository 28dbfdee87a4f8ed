// All that can be done, in one table: buttons, tooltips, keys and the list of commands come from here.
import { align, distribute, grow, nudge } from './arrange.js';
import { button, find, iconButton } from './dom.js';
import { isBusy, playNow, saveAll, travel } from './edits.js';
import { showBelow } from './below.js';
import { nextFault } from './faults.js';
import { ways } from './geometry.js';
import { history } from './history.js';
import { focusList } from './list.js';
import { showPalette } from './palette.js';
import { zoomBy, zoomTo, zoomToSelection } from './picture.js';
import { cancelGesture } from './pointer.js';
import { isDark, prefer, preferences } from './preferences.js';
import { focusProperties } from './properties.js';
import { copySelected, createBuffer, createSlot, createWindow, paste, removeSelected, reorder, selectAll, step, take }
  from './records.js';
import { activeDocument, canPreview, nextStep, on, screenDocument, select, selected, showView, state, unsavedDocuments,
  windowsDocument } from './state.js';
import { nextMissing } from './texts.js';

function nextLanguage() {
  const codes = state.project.languages.map((each) => each.code);
  showView({ language: codes[(codes.indexOf(state.language) + 1) % codes.length] });
}
function showScreen(key) {
  const view = state.project.views[Number(key.at(-1)) - 1]?.view;
  if (view) showView({ view });
}
const wayOf = (key, by = 1) => ways[key.split('+').at(-1)].map((part) => part * by);
const arrows = (changed) => Object.keys(ways).map((key) => `${changed}${key}`);
function escape() {
  if (cancelGesture()) return;
  if ([find('viewport'), document.body].includes(document.activeElement)) select([]);
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

function showHistory() {
  showBelow('history');
  history.focus();
}

const hasScreen = () => Boolean(screenDocument());
const placed = (least) => () => selected().filter((each) => each.rect).length >= least;
const some = (...kinds) => () => selected().some((each) => kinds.includes(each.kind));
const toggle = (name) => ({ on: () => preferences[name], run: () => prefer({ [name]: !preferences[name] }) });
const look = (name) => ({ when: () => canPreview() && some('slot')(), on: () => state.look === name,
  run: () => select(state.selection, { look: state.look === name ? '' : name }) });
const travelling = (path) => ({ when: () => nextStep(activeDocument(), path) || isBusy(), run: () => travel(path),
  says(title) {
    const step = nextStep(activeDocument(), path);
    return step ? `${title}: ${step}` : `Nothing to ${path}`;
  } });

// `where`: without it a key works everywhere, "text" not while a text is typed, as do single letters and signs,
// "picture" only in the picture. `when` tells whether it can be done now, `on` whether it is switched on, `says` what
// it is called now. `run` gets the key, and says false when the browser shall do what it does. A row without keys has
// only a button, one without `run` or with `shown` is only told.
const commands = [
  { id: 'find', group: 'Choose', title: 'Find slots, texts, faults, commands', keys: ['Ctrl+F', 'Ctrl+K'],
    run: () => showPalette(told()) },
  { id: 'keys', title: 'All that can be done, with its key', keys: ['?'], run: () => showPalette(told()) },
  { id: 'step', title: 'Next, previous slot; behind the last one out of the picture',
    keys: ['Tab', 'Shift+Tab'], where: 'picture', run: (key) => step(key === 'Shift+Tab' ? -1 : 1) },
  { id: 'all', title: 'All slots but the background', keys: ['Ctrl+A'], where: 'text', run: selectAll },
  { id: 'escape', title: 'End a drag; back to the picture; choose nothing', keys: ['Escape'], run: escape },
  { id: 'part', title: 'From the picture to the list, properties, the list below', keys: ['F6'], run: nextPart },
  { id: 'properties', title: 'To the properties of what is chosen', keys: ['Enter'], where: 'picture',
    when: placed(1), run: focusProperties },

  { id: 'nudge', group: 'Move', title: 'One pixel or cell', shown: 'Arrow keys', keys: arrows(''), where: 'picture',
    run: (key) => nudge(...wayOf(key)) },
  { id: 'nudge10', title: 'Ten pixels or cells', shown: 'Shift+Arrow keys', keys: arrows('Shift+'), where: 'picture',
    run: (key) => nudge(...wayOf(key, 10)) },
  { id: 'grow', title: 'Wider, narrower, taller, lower', shown: 'Alt+Arrow keys', keys: arrows('Alt+'),
    where: 'picture', run: (key) => grow(...wayOf(key)) },
  { id: 'forward', title: 'Forward: drawn later', keys: ['PageUp'], where: 'picture', when: some('slot'),
    run: () => reorder(1) },
  { id: 'backward', title: 'Backward: drawn earlier', keys: ['PageDown'], where: 'picture', when: some('slot'),
    run: () => reorder(-1) },
  ...['left', 'centre', 'right', 'top', 'middle', 'bottom'].map((how) =>
    ({ id: how, title: `Align ${how}`, when: placed(1), run: () => align(how) })),
  { id: 'across', title: 'Same gaps across', when: placed(3), run: () => distribute(0) },
  { id: 'down', title: 'Same gaps down', when: placed(3), run: () => distribute(1) },

  { id: 'undo', group: 'Change', title: 'Undo', keys: ['Ctrl+Z'], ...travelling('undo') },
  { id: 'redo', title: 'Redo', keys: ['Ctrl+Y', 'Ctrl+Shift+Z'], ...travelling('redo') },
  { id: 'history', title: 'All steps, to go back and forth in', keys: ['Ctrl+H'], run: showHistory },
  { id: 'save', title: 'Save', keys: ['Ctrl+S'], run: saveAll,
    says: () => (unsavedDocuments().length ? `Unsaved: ${unsavedDocuments().map((each) => each.name).join(', ')}`
      : 'Everything is saved') },
  { id: 'text', title: 'New text', keys: ['N'], when: hasScreen, run: () => createSlot('text') },
  { id: 'button', title: 'New button', keys: ['B'], when: hasScreen, run: () => createSlot('button') },
  { id: 'picture', title: 'New picture, out of a buffer', keys: ['P'], when: hasScreen,
    run: () => createSlot('picture') },
  { id: 'window', title: 'New text window, and a slot that shows it', keys: ['W'],
    when: () => hasScreen() && Boolean(windowsDocument()), run: createWindow },
  { id: 'buffer', title: 'New buffer, with a picture for slots', keys: ['I'], run: createBuffer },
  { id: 'copy', title: 'Copy beside itself', keys: ['Ctrl+D'], when: some('slot', 'window'),
    run: () => copySelected() },
  { id: 'take', title: 'Copy for this or another screen', keys: ['Ctrl+C'], where: 'text', run: take },
  { id: 'paste', title: 'Paste what was copied', keys: ['Ctrl+V'], where: 'text', when: hasScreen, run: paste },
  { id: 'remove', title: 'Delete what is chosen', keys: ['Delete', 'Backspace'], where: 'text',
    when: some('slot', 'toggle', 'window', 'buffer'), run: removeSelected },
  { id: 'play', title: 'Save, and start the program', keys: ['F5'], run: playNow },

  { id: 'plus', group: 'See', title: 'Larger', keys: ['+', '='], run: () => zoomBy(1) },
  { id: 'minus', title: 'Smaller', keys: ['-'], run: () => zoomBy(-1) },
  { id: 'fit', title: 'As large as fits', keys: ['0'], on: () => preferences.zoom === 0, run: () => zoomTo(0) },
  { id: 'closer', title: 'What is chosen as large as fits', keys: ['Z'], when: placed(1), run: zoomToSelection },
  { id: 'grid', title: 'Grid of cells', keys: ['G'], ...toggle('grid') },
  { id: 'snap', title: 'Snap to edges, or to the grid while it is shown', keys: ['S'], ...toggle('snap') },
  { id: 'outlines', title: 'Frames of all slots', keys: ['F'], ...toggle('outlines') },
  { id: 'labels', title: 'Numbers and names of all slots', ...toggle('labels') },
  { id: 'unseen', title: 'Hidden slots too', ...toggle('unseen') },
  { id: 'language', title: 'Other language', keys: ['L'], run: nextLanguage },
  { id: 'hover', title: 'The chosen slot with the pointer over it', keys: ['H'], ...look('highlight') },
  { id: 'pressed', title: 'The chosen slot while it is pressed', keys: ['J'], ...look('pressed') },
  { id: 'screen', title: 'Menu, options, help, message, explanations', shown: 'Ctrl+1 to 5',
    keys: [1, 2, 3, 4, 5].map((number) => `Ctrl+${number}`), run: showScreen },
  { id: 'fault', title: 'Next fault', keys: ['F8'], run: () => { showBelow('faults'); nextFault(); } },
  { id: 'missing', title: 'Next text that is not translated', keys: ['F7'],
    run: () => { showBelow('texts'); nextMissing(); } },
  { id: 'source', title: 'Source', keys: ['F9'], run: () => showBelow('source') },
  { id: 'day', title: 'Light or dark', run: () => prefer({ theme: isDark() ? 'light' : 'dark' }) },

  ...[['Click', 'Choose'], ['Ctrl+Click', 'Choose what lies under it'], ['Shift+Click', 'Add or take away'],
    ['Drag', 'Move; with Shift along one axis, with Ctrl without snapping, with Alt a copy'],
    ['Drag from the background', 'Choose what a band touches'], ['Ctrl+Wheel', 'Zoom'],
    ['Space+Drag, middle button', 'Move the view']].map(([shown, title], i) =>
    ({ group: i ? undefined : 'With the mouse', shown, title })),
];

const byId = new Map(commands.map((each) => [each.id, each]));
const byKey = new Map(commands.flatMap((row) => (row.keys ?? []).map((key) => [key, row])));
const keysOf = ({ shown, keys }) => shown ?? keys?.filter((key) => key !== '=').join(', ') ?? '';
const isUsable = (row) => Boolean(row.run && (row.when?.() ?? true));

function hintOf({ title, says, ...row }) {
  const text = says?.(title) ?? title;
  return keysOf(row) ? `${text} (${keysOf(row)})` : text;
}

/** The table as the list of commands shows it. */
function told() {
  let group = '';
  return commands.map((row) => {
    group = row.group ?? group;
    return { group, title: row.says?.(row.title) ?? row.title, keys: keysOf(row),
      run: !row.shown && isUsable(row) ? () => press(row) : null };
  });
}
const press = (row) => row.run(row.keys?.[0] ?? '');

// buttons

const buttons = [];
function follow(button, row) {
  buttons.push({ button, row });
  return button;
}
export function commandIcon(id) {
  const row = byId.get(id);
  return follow(iconButton(id, row.title, () => press(row)), row);
}
export function commandButton(id, label, properties) {
  const row = byId.get(id);
  return follow(button(label, () => press(row), properties), row);
}

function draw() {
  if (!state.project) return;
  for (const { button, row } of buttons) {
    button.title = hintOf(row);
    if (button.matches('.icon')) button.setAttribute('aria-label', button.title);
    if (row.when) button.disabled = !isUsable(row);
    if (row.on) button.setAttribute('aria-pressed', row.on());
  }
}
on('project document view selection list zoom preferences queue', draw);

// keys

function nameOfKey(event) {
  const letter = event.key.length === 1 ? event.key.toUpperCase() : event.key;
  const shift = event.shiftKey && (event.key.length > 1 || event.ctrlKey);
  return [(event.ctrlKey || event.metaKey) && 'Ctrl+', event.altKey && 'Alt+', shift && 'Shift+', letter]
    .filter(Boolean).join('');
}

const typing = (element) => element.matches('textarea, input:not([type="checkbox"])');

function allowed(where, key, target) {
  if (where === 'picture') return find('viewport').contains(target) || target === document.body;
  return (key.length > 1 && where !== 'text') || (!typing(target) && !target.matches('select'));
}

addEventListener('keydown', (event) => {
  if (document.querySelector('dialog[open], :popover-open') || event.defaultPrevented) return;
  const key = nameOfKey(event);
  const row = byKey.get(key);
  if (!row || !allowed(row.where, key, event.target)) return;
  if (['undo', 'redo'].includes(row.id) && typing(event.target) && event.target.dataset.typing)
    return; // the field's own undo, while it is being typed in
  if (!isUsable(row) || row.run(key) !== false) event.preventDefault();
});
