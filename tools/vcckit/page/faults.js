// What check says of the installation, again after every change. A click leads to the record and its field.
import { el, keeper, listbox } from './dom.js';
import { allFaults, keyOf, select, showView, state, tell, viewOf } from './state.js';

export const faults = listbox({ class: 'faults', 'aria-label': 'Faults' },
  { at: () => chosen, mark(number) { chosen = number; draw(); }, take: goToFault });
const clean = el('li', { class: 'clean' }, 'No faults: the installation is clean.');
const kept = keeper();
let chosen = 0;

faults.draw = draw;
function draw() {
  const all = allFaults();
  chosen = Math.min(chosen, Math.max(all.length - 1, 0));
  const rows = all.map((fault, i) => kept(i, [fault, i === chosen], () => row(fault, i)));
  faults.show(rows.length ? rows : [clean]);
}

function row(fault, number) {
  const where = [fault.document || fault.file, fault.line ? `:${fault.line}` : ''].join('');
  return el('li', { role: 'option', id: `fault-${number}`, 'aria-selected': number === chosen,
    title: [fault.explanation, fault.advice].filter(Boolean).join('\n'), on: { click: () => goToFault(number) } },
  el('span', { class: 'code' }, fault.code), el('span', { class: 'dim mono' }, where),
  el('span', {}, fault.problem), fault.advice ? el('span', { class: 'dim' }, fault.advice) : null);
}

/** Goes where a fault is: its screen, its record, its field; else its line of the source. */
export function goToFault(number) {
  chosen = number;
  const fault = allFaults()[number];
  if (!fault) return;
  const document = state.documents.get(fault.document);
  const view = state.project.views.find((each) => each.document === fault.document);
  if (view && view.document !== viewOf(state.view)?.document) showView({ view: view.view });
  if (document?.slots.some((each) => each.index === fault.slot)) {
    select(keyOf('slot', fault.slot));
    if (fault.field) tell('field', fault.field);
  } else if (document && fault.line) {
    tell('source', { name: fault.document, line: fault.line, column: fault.column, width: fault.width });
  }
  draw();
}

/** F8: the next fault, round and round. */
export function nextFault() {
  const all = allFaults();
  if (all.length) goToFault((chosen + (faults.dataset.visited ? 1 : 0)) % all.length);
  faults.dataset.visited = '1';
}
