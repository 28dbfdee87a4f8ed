// One field to find everything: what can be done, and slots, texts, styles and windows of all screens, and faults.
import { dialog } from './dialogs.js';
import { el, stepInList } from './dom.js';
import { goToFault } from './faults.js';
import { allFaults, itemsOf, select, showView, state, viewNames } from './state.js';

const MOST = 60; // rows at a time

/** What there is to go to: {group, title, words, run}. */
function places() {
  const found = [];
  const views = state.project.views.filter(({ view }, i, all) => all.findIndex((each) =>
    each.document === all[i].document) === i || view === state.view);
  const here = ({ view }) => (view === state.view ? 0 : 1); // the screen that is shown comes first
  for (const { view, document } of views.toSorted((a, b) => here(a) - here(b))) {
    const group = viewNames[view] ?? view;
    const go = (key) => () => { showView({ view }); select(key); };
    const screen = state.documents.get(document) ?? null;
    for (const { key, index, name, record } of itemsOf('slot', screen)) {
      const texts = [...new Set(Object.values(record.languages).map((each) => each.text.trim()).filter(Boolean))];
      found.push({ group, title: [`Slot ${index}`, name, texts.map((text) => `“${text}”`).join(' ')]
        .filter(Boolean).join('  '), words: record.styles.join(' '), run: go(key) });
    }
    for (const { key, name } of itemsOf('style', screen))
      found.push({ group, title: `Style ${name}`, run: go(key) });
  }
  for (const { key, index, record: { values } } of itemsOf('window'))
    found.push({ group: 'Text windows', title: `Window ${index}  ${values.title ?? ''}`, run: () => select(key) });
  for (const { key, index, record: { values } } of itemsOf('buffer'))
    found.push({ group: 'Buffers', title: `Buffer ${index}  ${values.picture}`, run: () => select(key) });
  return found.concat(allFaults().map((fault, number) => ({ group: 'Faults', title: `${fault.code}  ${fault.problem}`,
    words: `${fault.document} ${fault.where} ${fault.advice}`, run: () => goToFault(number) })));
}

/** `all` can be done: {group, title, keys, run}; without `run` not now, or not from here. */
export function showPalette(all) {
  const targets = places();
  let rows = [];
  let at = 0;
  const list = el('ul', { role: 'listbox', id: 'found', 'aria-label': 'Found' });
  const field = el('input', { type: 'search', role: 'combobox', 'aria-label': 'Find', 'aria-controls': 'found',
    'aria-expanded': 'true', autocomplete: 'off',
    placeholder: 'A number, a name, a text, a fault, or what is to be done',
    on: { input: () => { at = 0; search(); }, keydown } });

  function search() {
    const words = field.value.toLowerCase().split(/\s+/).filter(Boolean);
    const fits = (row) => words.every((word) => `${row.group} ${row.title} ${row.words ?? ''}`.toLowerCase()
      .includes(word));
    rows = words.length ? targets.filter(fits).concat(all.filter(fits)).slice(0, MOST) : all;
    list.replaceChildren(...rows.flatMap((row, i) => [
      row.group === rows[i - 1]?.group ? null : el('li', { class: 'group', role: 'presentation' }, row.group),
      el('li', { role: 'option', id: `found-${i}`, 'aria-disabled': !row.run,
        on: { click: () => take(row) } }, el('span', { class: 'grow' }, row.title),
      row.keys ? row.keys.split(', ').map((key) => el('kbd', {}, key)) : null)].filter(Boolean)),
    rows.length ? '' : el('li', { class: 'group' }, 'Nothing is called that.'));
    mark();
  }
  function mark() {
    list.querySelectorAll('[role=option]').forEach((each, i) => each.setAttribute('aria-selected', i === at));
    list.querySelector(`#found-${at}`)?.scrollIntoView({ block: 'nearest' });
    field.setAttribute('aria-activedescendant', `found-${at}`);
  }
  function keydown(event) {
    at = stepInList(event, at, rows.length) ?? at;
    mark();
    if (event.key !== 'Enter') return;
    event.preventDefault();
    take(rows[at]);
  }
  function take(row) {
    if (!row?.run) return;
    close();
    row.run();
  }

  const close = dialog('Find', el('div', { class: 'palette' }, field, list));
  search();
  field.focus();
}
