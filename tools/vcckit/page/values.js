// A field's value as one or several records have it: what it is, who says it, and how it is changed.
import { edit } from './edits.js';
import { addressOf, kinds, state } from './state.js';

/** The values that are shown: of the slot itself, or of its highlighted or pressed look. */
export function valuesOf(each, language) {
  if (each.record.values) return each.record.values; // of a text window or buffer
  if (each.kind === 'style')
    return fromTexts((state.look ? each.record.look_written[state.look] : each.record.written) ?? {}, language);
  const look = shownLook(each);
  const values = (look ?? each.record).languages[language]?.values ?? {};
  const { said = {}, styles = [] } = each.record; // what no record has
  return { ...flagsOf(values), ...(look ? {} : { ...fromTexts(said, language), style: styles[0] ?? '' }), ...values };
}

/** The shadow is true, or its colour. */
function flagsOf({ draw_flags: [hidden, shadow, skipped] = '', sound_flags: colour = '' }) {
  const [, number] = colour.match(/^\s*(\d+)/) ?? [];
  return { hidden: hidden === 'n', shadow: shadow === 's' && (number ? Number(number) : true),
    focus_skip: skipped === 'x' };
}

const fromTexts = (texts, language) => Object.fromEntries(Object.entries(texts).map(([field, text]) =>
  [field, valueOfText(text, language)]));

/** A value as a source writes it: a number, a flag, a text, or one of a table by language. */
function valueOfText(text, language) {
  if (typeof text !== 'string') return text;
  const entry = new RegExp(`\\b${language}\\s*=\\s*("(?:[^"\\\\]|\\\\.)*"|[^,}\\s]+)`);
  const own = text.startsWith('{') && text.match(entry);
  const plain = own ? own[1] : text;
  if (/^-?\d+$/.test(plain)) return Number(plain);
  if (plain === 'true' || plain === 'false') return plain === 'true';
  return /^".*"$/.test(plain) ? plain.slice(1, -1).replaceAll('\\"', '"') : plain;
}

/** The record of the look that is shown of a slot. */
const shownLook = (each) => (state.look && each.kind === 'slot' ? lookRecord(each, state.look) : null);
/** The toggle record that a slot's look is. */
export function lookRecord(each, look) {
  const index = look === 'highlight' ? each.index : each.record.activated || null;
  return each.document.toggles.find((one) => one.index === index) ?? null;
}

export const hasLook = (each, look) => each.record.looks.includes(look);

/** Who says a field: "slot", "style button", or null. */
export function originOf(each, field) {
  if (!each.record.languages) return field in valuesOf(each) ? each.kind : null;
  return (state.look ? each.record.look_written?.[state.look] : each.record.written)?.[field] ?? null;
}
export const isOwn = (origin) => origin in kinds;

/** {value, name, mixed, differs}: `mixed` over several records, `differs` between languages. */
export function valueOf(items, field) {
  const values = items.map((each) => valuesOf(each, state.language)[field]);
  const codes = state.project.languages.map((each) => each.code);
  return {
    value: values[0],
    name: (shownLook(items[0]) ?? items[0].record).languages?.[state.language]?.shown[field],
    mixed: values.some((value) => value !== values[0]),
    differs: items.some((each) => each.record.languages &&
      codes.some((code) => valuesOf(each, code)[field] !== valuesOf(each, codes[0])[field])),
  };
}

/** What a change of an item is addressed to: of a slot or style the look that is shown. */
export const addressFor = ({ key, kind }) => ({ ...addressOf(key),
  ...(['slot', 'style'].includes(kind) && state.look && { look: state.look }) });
export const nameOf = (items) => (items.length > 1 ? `${items.length} records` : items[0].key.replace(':', ' '));

/** Sets one field of all items, in one language or ("") in all. */
export function setValue(items, field, value, language = '', merge = '') {
  return setValues(items, { [field]: value }, language, merge);
}
export function setValues(items, values, language = '', merge = '') {
  const of = items.map(addressFor);
  const fields = Object.keys(values);
  return edit(items[0].document.name, `Change ${fields.join(', ')} of ${nameOf(items)}`,
    fields.map((field) => ({ do: 'set', of, field, language, value: values[field] })), merge);
}
export function unsetValue(items, field) {
  return edit(items[0].document.name, `Take back ${field} of ${nameOf(items)}`,
    [{ do: 'unset', of: items.map(addressFor), field, language: '' }]);
}
/** Puts a style, or none, in place of the first one of each item; further ones stay. */
export function chooseStyle(items, name) {
  const changes = items.map((each) => {
    const before = each.record.styles ?? [];
    const styles = [...new Set([name, ...before.slice(1)])].filter(Boolean);
    const common = { of: [addressFor(each)], field: 'style', language: '' };
    if (styles.length) return { do: 'set', ...common, value: styles.join(', ') };
    return before.length ? { do: 'unset', ...common } : null;
  }).filter(Boolean);
  return edit(items[0].document.name, `Change style of ${nameOf(items)}`, changes);
}
/** Languages in which a field is set when nothing else is said: where they differ, the one that is shown. */
export const usualLanguage = (items, field) => (isSpoken(items, field) ? state.language : '');
/** Texts are always changed in one language, also while they are the same in all. */
export const isSpoken = (items, field) => field === 'text' || valueOf(items, field).differs;

/** [{name, number}] for a meaning: those of the tool, and the document's own. */
export function namesFor(meaning, document) {
  const list = state.project.names[meaning === 'focus' ? 'toggle' : meaning] ?? [];
  const known = new Map(list.map((each) => [each.number, each]));
  for (const [name, number] of Object.entries(document?.names?.[meaning] ?? {}))
    known.set(number, { ...known.get(number), name, number, own: true });
  return [...known.values()].sort((a, b) => a.number - b.number);
}
/** What is written for a number: its name where the source knows it for certain. */
export function writtenFor(meaning, number, document) {
  if (document?.kind === 'windows') return number; // its lines hold nothing else
  const found = namesFor(meaning, document).find((each) => each.number === number);
  const certain = found && (found.own || !['buffer', 'sound'].includes(meaning));
  return certain ? found.name : number;
}
