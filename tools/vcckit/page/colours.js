// Colours: a swatch, a name, and the whole table of 256 to choose from.
import { popover } from './dialogs.js';
import { button, el, line } from './dom.js';
import { state } from './state.js';
import { namesFor, writtenFor } from './values.js';

const ACROSS = 16;

/** A small field of a colour "#rrggbb"; hatched without one. */
export const swatchOf = (colour) =>
  el('span', { class: colour ? 'swatch' : 'swatch none', style: `background: ${colour ?? ''}` });

export function colourInput({ items: [{ document }], field, value, set }) {
  const names = namesFor('colour', document);
  const named = names.find((each) => each.name === value.value);
  const current = named ? named.number : Number(value.value ?? 0);
  const shown = value.mixed || value.value === undefined ? ''
    : value.name ?? names.find((each) => each.number === current)?.name ?? String(value.value);
  const input = line(shown, (text) => {
    const typed = text.trim();
    if (typed) set(/^-?\d+$/.test(typed) ? Number(typed) : typed);
  }, { placeholder: value.mixed ? 'several' : '', list: `names-of-${field.name}`,
    'data-field': `${field.name} colour` });
  const table = button(swatchOf(value.mixed ? null : state.project.colours[current]),
    () => openTable(table, current, names, (number) => set(writtenFor('colour', number, document))),
    { class: 'swatch-button', title: 'Colour table', 'aria-label': `Colour table for ${field.name}`,
      'data-field': `${field.name} table` }); // the focus comes back to both
  return el('div', { class: 'with-button first' }, table, input, el('datalist', { id: `names-of-${field.name}` },
    names.map((each) => el('option', { value: each.name }))));
}

function openTable(anchor, current, names, chosen) {
  const { colours } = state.project;
  const nameOf = (number) => names.find((each) => each.number === number)?.name;
  const told = el('output', { class: 'dim' });
  const tell = (number) => { told.textContent = `${number}  ${nameOf(number) ?? ''}  ${colours[number] ?? null}`; };
  const cells = colours.map((colour, number) => el('button', { type: 'button', role: 'gridcell', class: 'colour',
    tabIndex: -1, style: `background: ${colour}`, 'aria-label': `${number} ${nameOf(number) ?? colour}`,
    'aria-selected': number === current,
    on: { click: () => { close(); chosen(number); }, pointerenter: () => tell(number), focus: () => tell(number) } }));
  const grid = el('div', { class: 'colour-table', role: 'grid', 'aria-label': 'Colour table', on: { keydown(event) {
    const step = { ArrowRight: 1, ArrowLeft: -1, ArrowDown: ACROSS, ArrowUp: -ACROSS }[event.key];
    const at = cells.indexOf(document.activeElement);
    if (!step || !cells[at + step]) return;
    cells[at + step].focus();
    event.preventDefault();
  } } }, cells);
  const close = popover(anchor, el('div', {}, grid, told));
  tell(current);
  (cells[current] ?? cells[0])?.focus();
}
