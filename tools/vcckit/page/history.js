// The steps of the document that is shown, to go back and forth in. What is undone stays until another change is made.
import { travel } from './edits.js';
import { el, keeper, listbox } from './dom.js';
import { activeDocument, state } from './state.js';

export const history = listbox({ class: 'history', 'aria-label': 'History' },
  { at: () => marked, mark(number) { marked = number; draw(); }, take: goTo });
const told = el('span', { class: 'dim' });
history.extra = [told];
const kept = keeper();
let marked = 0; // by the arrow keys; the number of steps that are done then
let shown = '';
let wanted = null;

history.draw = draw;
function draw() {
  const { name, file, steps, done } = activeDocument() ?? {};
  told.textContent = name ? `${file.split('/').pop()}: a click or Enter goes to a step` : '';
  if (!name) return void history.show([]);
  const now = `${name} ${done} ${steps.length}`;
  if (shown !== now) marked = done;
  history.show(['As it was opened', ...steps].map((label, number) => kept(number, [label, number > done,
    number === marked, number === done], () => row(label, number, done))));
  if (shown !== now) history.children[done].scrollIntoView({ block: 'nearest' });
  shown = now;
}

function row(label, number, done) {
  return el('li', { role: 'option', id: `step-${number}`, class: number > done ? 'undone' : '',
    'aria-selected': number === marked, 'aria-current': number === done, on: { click: () => goTo(number) } },
  el('span', { class: 'index' }, number || ''), label);
}

/** Undoes or redoes until so many steps are done; a later wish takes the place of one that is under way. */
async function goTo(number) {
  const isUnderWay = wanted !== null;
  wanted = number;
  if (isUnderWay) return;
  const { name } = activeDocument();
  const done = () => state.documents.get(name).done;
  while (wanted !== done() && await travel(wanted < done() ? 'undo' : 'redo', name));
  wanted = null;
}
