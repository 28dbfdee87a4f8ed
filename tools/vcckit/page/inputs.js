// One control for each kind of field. A control sends its value when it is left or Enter is pressed; numbers also step
// with arrow keys, and a row of such steps is one step of undo.
import { address } from './api.js';
import { chooseBuffer } from './buffer_chooser.js';
import { colourInput } from './colours.js';
import { el, iconButton, line } from './dom.js';
import { clamp } from './geometry.js';
import { say } from './messages.js';
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
  if (field.kind === 'flag' && field.meaning === 'colour') return flagOrColour(items, field, value, language);
  if (field.kind === 'flag') return flag(items, field, value, language);
  if (choices[field.name] && items[0].kind !== 'window') return choice(items, field, value, language);
  if (field.kind === 'text') return textLine(items, field, value, language);
  if (field.meaning === 'colour') return colourInput(items, field, value, language);
  if (['font', 'action', 'sound', 'buffer', 'input', 'toggle', 'focus'].includes(field.meaning))
    return named(items, field, value, language);
  return number(items, field, value, language);
}

function flag(items, field, value, language) {
  return el('input', { type: 'checkbox', checked: Boolean(value.value), indeterminate: value.mixed,
    on: { change: (event) => setValue(items, field.name, event.target.checked, language) } });
}

/** A flag, and the colour of what it switches on. */
function flagOrColour(items, field, value, language) {
  const colour = value.value === true ? undefined : value.value;
  return el('div', { class: 'with-button first' }, flag(items, field, value, language),
    value.value ? colourInput(items, field, { ...value, value: colour }, language) : null);
}

function choice(items, field, value, language) {
  const send = () => {
    if (field.name === 'style') chooseStyle(items, select.value);
    else if (select.value) setValue(items, field.name, select.value, language);
    else unsetValue(items, field.name);
  };
  const select = el('select', { on: { change: send } },
    ['', ...choices[field.name](items)].map((each) => el('option', { value: each }, each || '–')));
  select.value = value.mixed ? '' : value.value ?? '';
  return select;
}

const shownOf = (value) => (value.mixed ? '' : String(value.value ?? ''));
const several = (value) => (value.mixed ? 'several' : '');

function textLine(items, field, value, language) {
  return line(shownOf(value), (text) => setValue(items, field.name, text, language),
    { placeholder: several(value), ...(field.size && { maxLength: field.size }),
      ...(field.meaning === 'picture' && { list: 'pictures' }) });
}

function number(items, field, value, language) {
  const send = (text) => {
    const typed = text.trim();
    if (/^-?\d+$/.test(typed)) setValue(items, field.name, clamp(Number(typed), LEAST, -LEAST - 1), language);
    else if (typed) setValue(items, field.name, typed, language);
  };
  const input = line(shownOf(value), send, { placeholder: several(value), inputMode: 'numeric', class: 'number' });
  input.addEventListener('keydown', (event) => {
    const by = { ArrowUp: 1, ArrowDown: -1 }[event.key] * (event.shiftKey ? 10 : 1);
    if (!by || Number.isNaN(Number(input.value))) return; // of a pair neither
    event.preventDefault();
    const [low, high] = field.max > field.min ? [field.min, field.max] : [LEAST, -LEAST - 1];
    input.value = clamp((Number.parseInt(input.value, 10) || 0) + by, low, high);
    setValue(items, field.name, Number(input.value), language, `step ${field.name} ${items.map((each) => each.key)}`);
  });
  return input;
}

function named(items, field, value, language) {
  const document = items[0].document;
  const names = [...namesFor(field.meaning, document)];
  const own = field.meaning === 'toggle' || field.meaning === 'focus';
  if (own && items[0].index > 0) names.push({ name: 'highlighted', number: items[0].index });
  const current = numberOf(value.value, names);
  if (!names.some((each) => each.number === current)) names.push({ name: '', number: current });
  const select = el('select', { on: { change: () => {
    const chosen = Number(select.value);
    setValue(items, field.name, own ? chosen : writtenFor(field.meaning, chosen, document), language);
  } } }, value.mixed ? el('option', { value: '' }, 'several') : null,
  names.map((each) => el('option', { value: each.number }, each.name && each.number !== null
    ? nameOfBuffer(each) : String(each.number))));
  select.value = value.mixed ? '' : current;
  if (field.meaning === 'sound') {
    const hear = iconButton('heard', 'Hear it', () => play(Number(select.value)));
    return el('div', { class: 'with-button' }, select, hear);
  }
  if (field.meaning === 'buffer' && items[0].kind === 'slot') {
    const label = 'Choose the piece on the picture itself';
    const button = el('button', { type: 'button', class: 'swatch-button', title: label, 'aria-label': label,
      on: { click: () => chooseBuffer(items) } }, small(items[0]));
    return el('div', { class: 'with-button first' }, button, select);
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

function small({ shown }) {
  const [number, piece] = pieceOf(shown.values);
  return thumbnail(number, [2.6, 1.4], piece);
}

/** A style has names where records have numbers. */
function numberOf(value, names) {
  const known = names.find((each) => each.name === value);
  return known ? known.number : Number.parseInt(value ?? 0, 10) || 0;
}
