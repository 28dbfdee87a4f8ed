// Colours: a swatch, a name, and the whole table of 256 to choose from.
import { el, line } from './dom.js';
import { popover } from './dialogs.js';
import { state } from './state.js';
import { namesFor, setValue, writtenFor } from './values.js';

const ACROSS = 16;
const rgbOf = (number) => state.project.colours[number] ?? null;
const nameOf = (number, document) => namesFor('colour', document).find((each) => each.number === number)?.name;

/** A small field of a colour "#rrggbb"; hatched without one. */
export function swatchOf(colour) {
  const element = el('span', { class: colour ? 'swatch' : 'swatch none' });
  element.style.background = colour ?? '';
  return element;
}

export function colourInput(items, field, value, language) {
  const document = items[0].document;
  const named = namesFor('colour', document).find((each) => each.name === value.value);
  const current = named ? named.number : Number(value.value ?? 0);
  const shown = value.mixed || value.value === undefined ? ''
    : value.name ?? nameOf(current, document) ?? String(value.value);
  const input = line(shown, (text) => {
    const typed = text.trim();
    if (typed) setValue(items, field.name, /^-?\d+$/.test(typed) ? Number(typed) : typed, language);
  }, { placeholder: value.mixed ? 'several' : '', list: `names-of-${field.name}` });
  input.dataset.field = `${field.name} colour`;
  const button = el('button', { type: 'button', class: 'swatch-button', title: 'Colour table',
    'aria-label': `Colour table for ${field.name}`, on: { click: () => openTable(button, current, document, (number) =>
      setValue(items, field.name, writtenFor('colour', number, document), language)) } },
  swatchOf(rgbOf(value.mixed ? -1 : current)));
  button.dataset.field = `${field.name} table`; // the focus comes back to both
  return el('div', { class: 'with-button first' }, button, input, el('datalist', { id: `names-of-${field.name}` },
    namesFor('colour', document).map((each) => el('option', { value: each.name }))));
}

function openTable(anchor, current, screen, chosen) {
  const names = new Map(namesFor('colour', screen).map((each) => [each.number, each.name]));
  const told = el('output', { class: 'dim' });
  const tell = (number) => { told.textContent = `${number}  ${names.get(number) ?? ''}  ${rgbOf(number)}`; };
  const cells = state.project.colours.map((colour, number) => {
    const cell = el('button', { type: 'button', role: 'gridcell', class: 'colour', tabIndex: -1,
      'aria-label': `${number} ${names.get(number) ?? colour}`, 'aria-selected': String(number === current),
      on: { click: () => { close(); chosen(number); }, pointerenter: () => tell(number), focus: () => tell(number) } });
    cell.style.background = colour;
    return cell;
  });
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
