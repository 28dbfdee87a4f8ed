// The list at the left: slots, text windows or styles, as a listbox that arrow keys go through.
import { el, find, icon, segments } from './dom.js';
import { listKeys } from './records.js';
import { allFaults, item, on, select, showList, state, tell } from './state.js';

const panel = find('items');
const tabs = segments('Kind of list', [
  { value: 'slots', label: 'Slots', title: 'Slots of this screen' },
  { value: 'windows', label: 'Windows', title: 'Text windows of all screens' },
  { value: 'styles', label: 'Styles', title: 'Styles of this screen' },
], (value) => {
  select([]); // what is chosen is in the list that is shown
  showList(value);
});
const search = el('input', { type: 'search', placeholder: 'Find', 'aria-label': 'Find by number, name or text',
  class: 'grow', on: { input: () => draw() } });
const list = el('ul', { role: 'listbox', tabIndex: 0, 'aria-label': 'Slots', 'aria-multiselectable': 'true' });

panel.append(el('div', { class: 'list-head' }, tabs, el('div', { class: 'list-find' }, search)), list);

const kindWords = { text: 'text', picture: 'picture', window: 'shows a text window', other: 'other' };

function matches(each, words) {
  const text = [each.index, each.name, each.shown?.text, each.record.styles?.join(' ')].join(' ').toLowerCase();
  return words.every((word) => text.includes(word));
}

function shownItems() {
  const words = search.value.toLowerCase().split(/\s+/).filter(Boolean);
  return listKeys().map((key) => item(key)).filter((each) => each && matches(each, words));
}

let rows = new Map(); // key to {element, looks}; a row is made anew only when it looks different
let order = '';

function draw() {
  if (!state.project) return;
  tabs.show(state.list);
  const faulty = new Set(allFaults().map((each) => `${each.document}/${each.slot}`));
  const next = new Map();
  for (const each of shownItems()) {
    const looks = looksOf(each, faulty);
    const old = rows.get(each.key);
    const same = old && JSON.stringify(old.looks) === JSON.stringify(looks);
    const made = same ? old : { element: row(each.key, looks), looks };
    if (old && !same) old.element.replaceWith(made.element);
    next.set(each.key, made);
  }
  rows = next;
  const keys = [...rows.keys()].join(' ');
  if (keys !== order) list.replaceChildren(...[...rows.values()].map(({ element }) => element));
  order = keys;
  list.setAttribute('aria-activedescendant', list.querySelector('.lead')?.id ?? '');
}

function looksOf(each, faulty) {
  const kind = each.kind === 'slot' ? each.shown.kind : each.kind === 'window' ? 'window' : 'style';
  const isButton = each.kind === 'slot' && each.shown.selectable && kind !== 'window';
  return {
    icon: isButton ? 'button' : kind,
    index: each.kind === 'style' ? null : each.kind === 'toggle' ? `T${each.index}` : String(each.index),
    name: each.name || (each.shown?.text.trim() ? `“${each.shown.text.trim()}”` : `(${kindWords[kind] ?? kind})`),
    classes: [each.shown?.hidden && 'unseen', each.key === state.selection.at(-1) && 'lead',
      each.kind === 'slot' && faulty.has(`${each.document.name}/${each.index}`) && 'faulty'].filter(Boolean).join(' '),
    chosen: state.selection.includes(each.key),
    locked: Boolean(each.record.protected),
    hint: hint(each),
  };
}

function row(key, looks) {
  const element = el('li', { role: 'option', id: `item-${key.replace(/\W/g, '-')}`, class: looks.classes,
    'aria-selected': String(looks.chosen), title: looks.hint,
    on: {
      click: (event) => choose(key, event),
      pointerenter: () => { state.hovered = key; tell('hovered'); },
      pointerleave: () => { state.hovered = null; tell('hovered'); },
    } },
  icon(looks.icon), looks.index === null ? null : el('span', { class: 'index' }, looks.index),
  el('span', { class: 'name' }, looks.name), looks.locked ? icon('locked') : null);
  element.dataset.key = key;
  return element;
}

function hint(each) {
  if (each.kind !== 'slot') return each.name;
  return [`Slot ${each.index}, ${kindWords[each.shown.kind] ?? each.shown.kind}`, each.shown.hidden && 'hidden',
    each.record.protected].filter(Boolean).join(' · ');
}

function choose(key, event) {
  const keys = shownItems().map((each) => each.key);
  if (event.shiftKey && state.selection.length) {
    const [from, to] = [keys.indexOf(state.selection[0]), keys.indexOf(key)].sort((a, b) => a - b);
    select([...keys.slice(Math.max(from, 0), to + 1).filter((each) => each !== key), key]);
  } else if (event.ctrlKey || event.metaKey) {
    select(state.selection.includes(key) ? state.selection.filter((each) => each !== key) : [...state.selection, key]);
  } else select(key);
}

const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: 10, PageUp: -10, Home: -1e6, End: 1e6 };
list.addEventListener('keydown', (event) => {
  if (event.key === 'Enter') {
    find('viewport').focus();
    event.preventDefault();
    event.stopPropagation();
    return;
  }
  const step = steps[event.key];
  if (!step || event.altKey || event.ctrlKey) return;
  const keys = shownItems().map((each) => each.key);
  if (!keys.length) return;
  const at = keys.indexOf(state.selection.at(-1));
  const next = keys[Math.min(Math.max(at + step, 0), keys.length - 1)];
  select(event.shiftKey ? [...state.selection.filter((key) => key !== next), next] : next);
  event.preventDefault();
  event.stopPropagation();
});
search.addEventListener('keydown', (event) => {
  if (event.key === 'Escape' && search.value) {
    search.value = '';
    draw();
    event.stopPropagation();
  } else if (event.key === 'ArrowDown' || event.key === 'Enter') {
    list.focus();
    const first = shownItems()[0];
    if (first && event.key === 'Enter') select(first.key);
    event.preventDefault();
  }
});

export const focusList = () => list.focus();
export const focusSearch = () => search.focus();

on('hovered', () => {
  for (const element of list.children) element.classList.toggle('hovered', element.dataset.key === state.hovered);
});
on('project document selection view list faults', draw);
on('selection list project', () => list.querySelector('.lead')?.scrollIntoView({ block: 'nearest' }));
