// One control for each kind of field. A control sends its value when it is left or Enter is pressed; numbers also step
// with arrow keys, and a row of such steps is one step of undo.
import { address } from './api.js';
import { chooseBuffer } from './buffer_chooser.js';
import { colourInput } from './colours.js';
import { say } from './dialogs.js';
import { button, el, iconButton, line } from './dom.js';
import { clamp } from './geometry.js';
import { nameOfBuffer, pieceOf, thumbnail } from './thumbnails.js';
import { chooseStyle, namesFor, setValue, unsetValue, writtenFor } from './values.js';

const LEAST = -2147483648; // that a record can hold
// Fields of text windows that are more than plain numbers.
const windowMeanings = { colour: 'colour', title_colour: 'colour', font: 'font', open_sound: 'sound',
  close_sound: 'sound' };
const choices = { align: () => ['left', 'centre', 'right'], style: (items) => items[0].document.styles
  .map((each) => each.name) };

export function inputFor(items, given, value, language) {
  const field = given.meaning === 'window' ? { ...given, meaning: windowMeanings[given.name] ?? 'number' } : given;
  const cell = { items, field, value, set: (next, merge) => setValue(items, field.name, next, language, merge) };
  if (field.kind === 'flag') return field.meaning === 'colour' ? flagOrColour(cell) : flag(cell);
  if (choices[field.name] && items[0].kind !== 'window') return choice(cell);
  if (field.kind === 'text') return textLine(cell);
  if (field.meaning === 'colour') return colourInput(cell);
  return ['font', 'action', 'sound', 'buffer', 'input', 'toggle', 'focus'].includes(field.meaning) ? named(cell)
    : number(cell);
}

const flag = ({ value, set }) => el('input', { type: 'checkbox', checked: Boolean(value.value),
  indeterminate: value.mixed, on: { change: (event) => set(event.target.checked) } });

/** A flag, and the colour of what it switches on. */
function flagOrColour(cell) {
  const { value } = cell.value;
  return el('div', { class: 'with-button first' }, flag(cell),
    value ? colourInput({ ...cell, value: { ...cell.value, value: value === true ? undefined : value } }) : null);
}

function choice({ items, field, value, set }) {
  const send = () => {
    if (field.name === 'style') chooseStyle(items, select.value);
    else if (select.value) set(select.value);
    else unsetValue(items, field.name);
  };
  const select = el('select', { on: { change: send } },
    ['', ...choices[field.name](items)].map((each) => el('option', { value: each }, each || '–')));
  select.value = value.mixed ? '' : value.value ?? '';
  return select;
}

const freeLine = ({ value }, send, properties) => line(value.mixed ? '' : String(value.value ?? ''), send,
  { placeholder: value.mixed ? 'several' : '', ...properties });

const textLine = (cell) => freeLine(cell, (text) => cell.set(text), { maxLength: cell.field.size || null,
  list: cell.field.meaning === 'picture' ? 'pictures' : null });

function number(cell) {
  const { items, field, set } = cell;
  const input = freeLine(cell, (text) => {
    const typed = text.trim();
    if (typed) set(/^-?\d+$/.test(typed) ? clamp(Number(typed), LEAST, -LEAST - 1) : typed);
  }, { inputMode: 'numeric', class: 'number' });
  input.addEventListener('keydown', (event) => {
    const by = { ArrowUp: 1, ArrowDown: -1 }[event.key] * (event.shiftKey ? 10 : 1);
    if (!by || Number.isNaN(Number(input.value))) return; // of a pair neither
    event.preventDefault();
    const [low, high] = field.max > field.min ? [field.min, field.max] : [LEAST, -LEAST - 1];
    input.value = clamp((Number.parseInt(input.value, 10) || 0) + by, low, high);
    set(Number(input.value), `step ${field.name} ${items.map((each) => each.key)}`);
  });
  return input;
}

function named({ items, field, value, set }) {
  const { document, index, kind, shown } = items[0];
  const names = [...namesFor(field.meaning, document)];
  const own = field.meaning === 'toggle' || field.meaning === 'focus';
  if (own && index > 0) names.push({ name: 'highlighted', number: index });
  const current = numberOf(value.value, names);
  if (!names.some((each) => each.number === current)) names.push({ name: '', number: current });
  const select = el('select', { on: { change() {
    const chosen = Number(select.value);
    set(own ? chosen : writtenFor(field.meaning, chosen, document));
  } } }, value.mixed ? el('option', { value: '' }, 'several') : null,
  names.map((each) => el('option', { value: each.number }, each.name && each.number !== null
    ? nameOfBuffer(each) : `${each.number}`)));
  select.value = value.mixed ? '' : current;
  if (field.meaning === 'sound') {
    const hear = iconButton('heard', 'Hear it', () => play(Number(select.value)));
    return el('div', { class: 'with-button' }, select, hear);
  }
  if (field.meaning === 'buffer' && kind === 'slot') {
    const label = 'Choose the piece on the picture itself';
    const piece = button(thumbnail(shown.values.buffer, [2.6, 1.4], pieceOf(shown.values)), () => chooseBuffer(items),
      { class: 'swatch-button', title: label, 'aria-label': label });
    return el('div', { class: 'with-button first' }, piece, select);
  }
  return select;
}

let player = null;
/** A sound of the installation, as it is. */
function play(number) {
  player?.pause();
  if (!number) return;
  player = new Audio(address('sound', { number }));
  player.play().catch(() => say(`Sound ${number} cannot be played.`, 'bad'));
}

/** A style has names where records have numbers. */
function numberOf(value, names) {
  const known = names.find((each) => each.name === value);
  return known ? known.number : Number.parseInt(value ?? 0, 10) || 0;
}
