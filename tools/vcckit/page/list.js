// The list at the left: slots, text windows or styles, as a listbox that arrow keys go through.
import { BACKGROUND } from './arrange.js';
import { button, el, find, icon, keeper, listbox, put, segments } from './dom.js';
import { takeOver } from './records.js';
import { faultFinder, hover, listDocument, listItems, on, select, showList, state, toggle } from './state.js';
import { pieceOf, thumbnail, version } from './thumbnails.js';

const panel = find('items');
const tabs = segments('Kind of list', [
  { value: 'slots', label: 'Slots', title: 'Slots of this screen' },
  { value: 'windows', label: 'Windows', title: 'Text windows of all screens' },
  { value: 'styles', label: 'Styles', title: 'Styles of this screen' },
  { value: 'buffers', label: 'Buffers', title: 'Graphic buffers, with the pictures that slots show pieces of' },
], (value) => {
  select([]); // what is chosen is in the list that is shown
  showList(value);
});
const list = listbox({ 'aria-label': 'Slots', 'aria-multiselectable': 'true' }, {
  at: () => listItems().findIndex((each) => each.key === state.selection.at(-1)),
  mark(number, { shiftKey }) {
    const { key } = listItems()[number];
    select(shiftKey ? [...state.selection.filter((each) => each !== key), key] : key);
  },
  take: () => find('viewport').focus(),
});

const about = el('div', { class: 'about' });
panel.append(el('div', { class: 'list-head' }, tabs), about, list);

const wordOf = (kind) => (kind === 'window' ? 'shows a text window' : kind);
const kept = keeper();

function draw() {
  if (!state.project) return;
  tabs.show(state.list);
  const isFaulty = faultFinder();
  list.show(listItems().map((each) => {
    const looks = looksOf(each, isFaulty(each));
    return kept(each.key, looks, () => row(each.key, looks));
  }));
  const { file, made, dirty } = listDocument() ?? {};
  put(about, [kept('about', [state.list, file, made && !dirty], aboutSource)]);
}

/** Why there is nothing in the list, or that what is there has no source yet. */
function aboutSource() {
  const document = listDocument();
  const name = document?.file.split('/').pop();
  if (!document) {
    return el('p', {}, `There is no source of ${state.list === 'windows' ? 'text windows' : 'this screen'}, and what ` +
      'is installed cannot be read as one; the faults below say why.');
  }
  if (!document.made || document.dirty) return el('p', { hidden: true });
  return el('p', {}, `No source yet: shown as it is installed. The first change makes ${name}. `,
    button('Take the source over', () => takeOver(document),
      { class: 'link', title: `Makes ${name} without another change` }));
}

function looksOf(each, isFaulty) {
  const kind = { slot: each.shown?.kind, window: 'window', buffer: 'picture' }[each.kind] ?? 'style';
  const isButton = each.kind === 'slot' && each.shown.selectable && kind !== 'window';
  return {
    icon: isButton ? 'button' : kind,
    shows: each.kind === 'slot' && kind === 'picture' ? [each.shown.values.buffer, [1.8, 1.3],
      pieceOf(each.shown.values), version] : null,
    index: each.kind === 'style' ? null : each.kind === 'toggle' ? `T${each.index}` : String(each.index),
    name: nameOf(each) || `(${wordOf(kind)})`,
    classes: [each.shown?.hidden && 'unseen', each.key === state.selection.at(-1) && 'lead',
      isFaulty && 'faulty'].filter(Boolean).join(' '),
    chosen: state.selection.includes(each.key),
    locked: Boolean(each.record.protected) || each.key === BACKGROUND,
    hint: hint(each),
  };
}

/** A name; records that are repeated share theirs and are told apart by their texts. */
function nameOf(each) {
  const text = each.shown?.text.trim();
  return text && (!each.name || each.record.repeat?.count > 1) ? text : each.name;
}

function row(key, looks) {
  return el('li', { role: 'option', id: `item-${key.replace(/\W/g, '-')}`, class: looks.classes,
    'aria-selected': looks.chosen, title: looks.hint, 'data-key': key,
    on: { click: (event) => choose(key, event), pointerenter: () => hover(key), pointerleave: () => hover(null) } },
  el('span', { class: 'sign' }, looks.shows ? thumbnail(...looks.shows) : icon(looks.icon),
    looks.locked ? el('span', { class: 'lock' }, icon('locked')) : null),
  looks.index === null ? null : el('span', { class: 'index' }, looks.index),
  el('span', { class: 'name' }, looks.name));
}

function hint(each) {
  if (each.kind !== 'slot') return each.name;
  return [`Slot ${each.index} ${each.name}, ${wordOf(each.shown.kind)}`,
    each.shown.hidden && 'hidden', each.record.protected].filter(Boolean).join(' · ');
}

function choose(key, event) {
  const keys = listItems().map((each) => each.key);
  if (event.shiftKey && state.selection.length) {
    const [from, to] = [keys.indexOf(state.selection[0]), keys.indexOf(key)].sort((a, b) => a - b);
    select([...keys.slice(Math.max(from, 0), to + 1).filter((each) => each !== key), key]);
  } else if (event.ctrlKey || event.metaKey) {
    toggle(key);
  } else select(key);
}

export const focusList = () => list.focus();

on('hovered', () => {
  for (const element of list.children) element.classList.toggle('hovered', element.dataset.key === state.hovered);
});
on('project document selection view list faults', draw);
on('selection list project', () => list.querySelector('.lead')?.scrollIntoView({ block: 'nearest' }));
