// Texts of the screen, all languages side by side.
import { edit } from './edits.js';
import { el } from './dom.js';
import { screenDocument, select, keyOf, state } from './state.js';

const body = el('tbody');
const head = el('tr');
export const texts = el('div', { class: 'texts' }, el('table', {}, el('thead', {}, head), body));

/** Slots that show a text of their own, and records whose text is empty but could show one. */
function rows(screen) {
  return screen.slots.filter((slot) => Object.values(slot.languages).some((each) => each.kind === 'text' && each.text));
}

export function drawTexts() {
  const screen = screenDocument();
  if (!screen) return;
  const codes = state.project.languages.map((each) => each.code);
  const active = document.activeElement;
  const focus = texts.contains(active) ? active.dataset.cell : null;
  const typed = focus && active.dataset.typing ? active.value : null;
  head.replaceChildren(el('th', {}, 'Slot'), ...state.project.languages.map((each) => el('th', {}, each.name)));
  body.replaceChildren(...rows(screen).map((slot) => {
    const same = codes.every((code) => slot.languages[code].text === slot.languages[codes[0]].text);
    return el('tr', { class: state.selection.includes(keyOf('slot', slot.index)) ? 'chosen' : '' },
      el('th', { scope: 'row' }, el('button', { type: 'button', class: 'link',
        on: { click: () => select(keyOf('slot', slot.index)) } }, String(slot.index)),
      el('span', { class: 'dim' }, ' ', slot.name)),
      codes.map((code) => el('td', {}, cell(screen, slot, code, same && codes.length > 1))));
  }));
  if (!focus) return;
  const input = body.querySelector(`[data-cell="${focus}"]`);
  if (typed !== null && input) {
    input.value = typed;
    input.dataset.typing = '1';
  }
  input?.focus();
}

function cell(screen, slot, code, same) {
  const limit = state.project.fields.find((each) => each.name === 'text')?.size || 90;
  const shown = slot.languages[code].text;
  const name = state.project.languages.find((each) => each.code === code).name;
  const input = el('input', { type: 'text', value: shown, maxLength: limit, lang: code, spellcheck: false,
    class: same ? 'same' : '', title: same ? 'The same in all languages' : '',
    'aria-label': `Text of slot ${slot.index}, ${name}` });
  input.dataset.cell = `${slot.index}-${code}`;
  const send = () => {
    delete input.dataset.typing;
    if (input.value === shown) return;
    edit(screen.name, `Change text of slot ${slot.index} (${code})`,
      [{ do: 'set', of: [{ slot: slot.index }], field: 'text', language: code, value: input.value }]);
  };
  input.addEventListener('input', () => { input.dataset.typing = '1'; });
  input.addEventListener('change', send);
  input.addEventListener('focus', () => select(keyOf('slot', slot.index)));
  input.addEventListener('keydown', (event) => {
    const by = { ArrowDown: 1, Enter: 1, ArrowUp: -1 }[event.key];
    if (event.key === 'Escape') {
      input.value = shown;
      delete input.dataset.typing;
    } else if (by) {
      const column = [...body.querySelectorAll(`[data-cell$="-${code}"]`)];
      column[column.indexOf(input) + by]?.focus();
      event.preventDefault();
    }
  });
  return input;
}
