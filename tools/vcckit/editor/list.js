// The list at the left: slots, text windows or styles, as a listbox that arrow keys go through.
import { el, find, icon, iconButton, segments } from './dom.js';
import { createSlot, listKeys } from './records.js';
import { allFaults, item, on, select, showList, state, tell } from './state.js';

const panel = find('items');
const tabs = segments('Kind of list', [
  { value: 'slots', label: 'Slots', title: 'Slots of this screen' },
  { value: 'windows', label: 'Windows', title: 'Text windows of all screens' },
  { value: 'styles', label: 'Styles', title: 'Styles of this screen' },
], (value) => { showList(value); });
const search = el('input', { type: 'search', placeholder: 'Find', 'aria-label': 'Find by number, name or text',
  class: 'grow', on: { input: () => draw() } });
const list = el('ul', { role: 'listbox', tabIndex: 0, 'aria-label': 'Slots', 'aria-multiselectable': 'true' });

panel.append(el('div', { class: 'list-head' }, tabs, el('div', { class: 'list-find' }, search,
  iconButton('plus', 'New slot (N)', () => createSlot()))), list);

const kinds = { text: 'text', picture: 'picture', window: 'window', other: 'other' };
const kindWords = { text: 'text', picture: 'picture', window: 'shows a text window', other: 'other' };

function matches(each, words) {
  const text = [each.index, each.name, each.shown?.text, each.record.styles?.join(' ')].join(' ').toLowerCase();
  return words.every((word) => text.includes(word));
}

function shownItems() {
  const words = search.value.toLowerCase().split(/\s+/).filter(Boolean);
  return listKeys().map((key) => item(key)).filter((each) => each && matches(each, words));
}

function draw() {
  if (!state.project) return;
  tabs.show(state.list);
  const faulty = new Set(allFaults().map((each) => `${each.document}/${each.slot}`));
  list.replaceChildren(...shownItems().map((each) => row(each, faulty)));
  const lead = list.querySelector('.lead');
  list.setAttribute('aria-activedescendant', lead?.id ?? '');
  lead?.scrollIntoView({ block: 'nearest' });
}

function row(each, faulty) {
  const chosen = state.selection.includes(each.key);
  const kind = each.kind === 'slot' ? kinds[each.shown.kind] : each.kind === 'window' ? 'window' : 'style';
  const isButton = each.kind === 'slot' && each.shown.selectable;
  const name = each.name || (each.shown?.text ? `“${each.shown.text.trim()}”` : '');
  const classes = [each.shown?.hidden && 'unseen', each.key === state.selection.at(-1) && 'lead',
    each.kind === 'slot' && faulty.has(`${each.document.name}/${each.index}`) && 'faulty'].filter(Boolean).join(' ');
  const element = el('li', { role: 'option', id: `item-${each.key.replace(/\W/g, '-')}`, class: classes,
    'aria-selected': String(chosen), title: hint(each),
    on: {
      click: (event) => choose(each.key, event),
      pointerenter: () => { state.hovered = each.key; tell('hovered'); },
      pointerleave: () => { state.hovered = null; tell('hovered'); },
    } },
  icon(isButton && kind !== 'window' ? 'button' : kind), each.kind === 'style' ? null
    : el('span', { class: 'index' }, each.kind === 'toggle' ? `T${each.index}` : String(each.index)),
  el('span', { class: 'name' }, name), each.record.protected ? icon('locked') : null);
  element.dataset.key = each.key;
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
