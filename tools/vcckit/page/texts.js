// Texts of the screen, all languages side by side, with what is not translated marked.
import { edit } from './edits.js';
import { button, el, keeper, keepFocus, line, put } from './dom.js';
import { allDocuments, keyOf, screenDocument, select, showView, state } from './state.js';

const body = el('tbody');
const head = el('tr');
const left = el('span', { class: 'dim' });
export const texts = el('div', { class: 'texts' }, el('table', {}, el('thead', {}, head), body));
texts.extra = [left];
const kept = keeper();

/** Slots that show a text in some language. */
function rows(screen) {
  return (screen?.slots ?? []).filter((slot) => Object.values(slot.languages)
    .some((each) => each.kind === 'text' && each.text));
}

/** How many texts of a screen a language lacks. */
const lacking = (screen) => rows(screen).flatMap((slot) => Object.values(slot.languages))
  .filter((each) => !each.text.trim()).length;

texts.draw = () => { if (state.project) keepFocus(texts, () => draw(screenDocument())); };

function draw(screen) {
  const codes = state.project.languages.map((each) => each.code);
  head.replaceChildren(el('th', {}, 'Slot'), ...state.project.languages.map((each) => el('th', {}, each.name)));
  put(body, rows(screen).map((slot) => {
    const all = codes.map((code) => slot.languages[code].text);
    const same = all.every((text) => text === all[0]);
    const element = kept(slot.index, [screen.name, slot.name, all], () => row(screen, slot, codes, same));
    element.classList.toggle('chosen', state.selection.includes(keyOf('slot', slot.index)));
    return element;
  }));
  const [here, elsewhere] = [true, false].map((own) => allDocuments()
    .filter((each) => each.kind === 'screen' && (each === screen) === own)
    .reduce((sum, each) => sum + lacking(each), 0));
  left.textContent = here || elsewhere ? `${here} not translated, ${elsewhere} on other screens (F7)`
    : 'Every text is there in every language.';
}

function row(screen, slot, codes, same) {
  const number = button(slot.index, () => select(keyOf('slot', slot.index)), { class: 'link' });
  return el('tr', {}, el('th', { scope: 'row' }, number, el('span', { class: 'dim' }, ' ', slot.name)),
    codes.map((code) => el('td', {}, cell(screen, slot, code, same && codes.length > 1))));
}

function cell(screen, slot, code, same) {
  const limit = state.project.fields.find((each) => each.name === 'text')?.size || 90;
  const shown = slot.languages[code].text;
  const name = state.project.languages.find((each) => each.code === code).name;
  const send = (text) => edit(screen.name, `Change text of slot ${slot.index} (${code})`,
    [{ do: 'set', of: [{ slot: slot.index }], field: 'text', language: code, value: text }]);
  const input = line(shown, send, { maxLength: limit, lang: code, placeholder: 'not translated',
    class: !shown.trim() ? 'missing' : same ? 'same' : '', title: same ? 'The same in all languages' : '',
    'aria-label': `Text of slot ${slot.index}, ${name}`, 'data-field': `${slot.index}-${code}` });
  input.addEventListener('focus', () => select(keyOf('slot', slot.index)));
  input.addEventListener('keydown', (event) => {
    const by = { ArrowDown: 1, Enter: 1, ArrowUp: -1 }[event.key];
    if (!by) return;
    const column = [...body.querySelectorAll(`[data-field$="-${code}"]`)];
    column[column.indexOf(input) + by]?.focus();
    event.preventDefault();
  });
  return input;
}

/** F7: the next text that another language has and this one lacks, round and round through all screens. */
export function nextMissing() {
  const missing = () => [...body.querySelectorAll('.missing')];
  const next = missing()[missing().indexOf(document.activeElement) + 1];
  if (next) return void next.focus();
  const { views } = state.project;
  const here = views.findIndex(({ view }) => view === state.view);
  const further = [...views.slice(here + 1), ...views.slice(0, here)].find(({ document: name }) => {
    const screen = state.documents.get(name);
    return screen && screen !== screenDocument() && lacking(screen);
  });
  if (further) showView({ view: further.view });
  missing()[0]?.focus();
}
