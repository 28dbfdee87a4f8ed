// Properties of what is chosen, in groups. Names, units, ranges and help come from the tool.
import { address } from './api.js';
import { button, el, find, icon, iconButton, keeper, keepFocus, planned, put } from './dom.js';
import { inputFor } from './inputs.js';
import { labelOf, rawName } from './labels.js';
import { looksOf } from './looks.js';
import { movedBy } from './arrange.js';
import { renumber, split } from './records.js';
import { keyOf, kinds, on, select, selected, state, tell } from './state.js';
import { addressFor, hasLook, isOwn, isSpoken, originOf, setValue, unsetValue, usualLanguage, valueOf }
  from './values.js';
import { edit } from './edits.js';
import { explain } from './status.js';

const panel = find('properties');
const body = el('div', { class: 'fields' });
panel.append(body);
const kept = keeper();

// Rows of fields that are read together; what is in no group comes last, under "More". What does not concern a kind of
// record stays closed until it is asked for.
const groups = [
  { title: 'Text', closedFor: 'picture', rows: [['text'], ['align', 'padding'], ['font'],
    ['fore_colour', 'back_colour'], ['input_mode', 'size']] },
  { title: 'Place', rows: [['dest_x', 'dest_y'], ['column', 'row'], ['box_width', 'box_height']] },
  { title: 'Picture', closedFor: 'text', rows: [['graphic'], ['buffer'], ['src_x', 'src_y']] },
  { title: 'Drawing', rows: [['hidden'], ['focus_skip'], ['shadow']] },
  { title: 'Action', rows: [['action'], ['toggle', 'activated'], ['display_time'], ['sound'], ['sound_act']] },
  { title: 'Help', rows: [['help_file'], ['help_number']] },
  { title: 'More', rows: [['style'], ['name'], ['draw_flags', 'sound_flags'],
    ['min_value', 'max_value'], ['reserved']] },
];
const pictureFirst = [1, 2, 4, 3, 5, 0, 6].map((number) => groups[number]);
const windowGroups = [
  { title: 'Place', rows: [['left', 'top'], ['right', 'bottom'], ['pixels', 'font']] },
  { title: 'Looks', rows: [['title'], ['style'], ['colour', 'title_colour'], ['red', 'green'], ['blue', 'alpha'],
    ['shadow', 'grid']] },
  { title: 'Behaviour', rows: [['open_sound'], ['close_sound'], ['pointer_offset']] },
];
const bufferGroups = [{ title: 'Picture', rows: [['picture']] }];
// Entries of a source that are changed in another way: by gestures, by the looks, or in the source itself.
const elsewhere = new Set(['index', 'highlight', 'pressed', 'copy']);

function fieldsOf(items) {
  const { fields, window_fields: window, buffer_fields: buffer } = state.project;
  const all = { window, buffer }[items[0].kind] ?? fields;
  return new Map(all.filter((each) => !elsewhere.has(each.name)).map((each) => [each.name, each]));
}

function draw() {
  if (!state.project) return;
  const items = sameKind(selected());
  keepFocus(body, () => put(body, items.length ? propertiesOf(items) : [nothing()]));
}

const kindOf = ([each]) => each.shown?.kind ?? each.kind;

function sameKind(items) {
  const { kind, document } = items.at(-1) ?? {};
  return items.filter((each) => each.kind === kind && each.document === document).reverse(); // the leading one first
}

function nothing() {
  return el('div', { class: 'empty' }, el('p', {}, 'Nothing is chosen.'),
    el('p', { class: 'dim' }, 'Click into the picture or the list. Ctrl takes what lies under it, Shift adds, ',
      'dragging draws a band around several.'),
    el('p', { class: 'dim' }, 'What is chosen moves with the mouse or the arrow keys; all that can be said of it ',
      'appears here. ', ...['N', 'B', 'P', 'W', 'I'].map((key) => el('kbd', {}, key)), ' make a new text, button, ',
      'picture, text window or buffer.'),
    el('p', { class: 'dim' }, 'The sources change when they are saved, ', el('kbd', {}, 'Ctrl+S'), '; until then ',
      'every step can be undone, ', el('kbd', {}, 'Ctrl+Z'), '. ', el('kbd', {}, 'F5'), ' plays the result.'),
    el('p', { class: 'dim' }, el('kbd', {}, 'Ctrl+F'), ' finds everything, ', el('kbd', {}, '?'),
      ' shows all that can be done.'));
}

function propertiesOf(items) {
  const [each] = items;
  const parts = [kept('heading', items.map(({ key, name, line, record, document }) => [key, name, line, document.name,
    record.protected, record.styles, record.repeat]), () => heading(items))];
  if (each.kind === 'buffer')
    parts.push(kept('picture', each.record, () => el('img', { class: 'buffer', alt: each.name,
      src: address('buffer.png', { number: each.index, picture: each.record.values.picture }) })));
  const hasLooks = each.kind === 'slot' || each.kind === 'style';
  if (hasLooks && items.length === 1) parts.push(looksOf(each));
  if (state.look && hasLooks && !items.every((one) => hasLook(one, state.look)))
    return [...parts, lookToMake(items)];
  const fields = fieldsOf(items);
  const kind = kindOf(items);
  const wanted = { window: windowGroups, buffer: bufferGroups }[each.kind] ??
    (kind === 'picture' ? pictureFirst : groups);
  const named = new Set(wanted.flatMap((group) => group.rows.flat()));
  const rest = [...fields.keys()].filter((name) => !named.has(name)).map((name) => [name]);
  for (const group of wanted) {
    const rows = (group.title === 'More' ? group.rows.concat(rest) : group.rows)
      .map((names) => names.filter((name) => fields.has(name))).filter((names) => names.length);
    if (rows.length) parts.push(section(group, kind, rows.map((names) => row(items, names, fields))));
  }
  return parts;
}

function section({ title, closedFor }, kind, rows) {
  const open = title !== 'More' && closedFor !== kind;
  const details = kept(`section ${title} ${kind}`, 0, () => el('details', { open }, el('summary', {}, title)));
  return put(details, [details.firstChild, ...rows]);
}

// heading

function heading(items) {
  const [each] = items;
  if (items.length > 1) {
    return el('div', { class: 'heading' }, el('h2', {}, `${items.length} records`),
      el('p', { class: 'dim' }, 'A change is made to all of them.'));
  }
  const number = each.kind === 'slot' && !each.record.protected ? numberInput(each) : null;
  return el('div', { class: 'heading' },
    el('div', { class: 'title' }, el('h2', {}, kinds[each.kind].title, ' ', number ?? String(each.index ?? each.name)),
      el('span', { class: 'dim grow' }, each.kind === 'style' ? '' : each.name), lineButton(each)),
    each.record.protected ? el('p', { class: 'note' }, icon('locked'),
      `Its number is fixed: the program knows it as the ${each.record.protected}`) : null,
    each.record.styles?.length ? el('p', { class: 'chips' }, 'Styles ', each.record.styles.map(styleChip)) : null,
    each.record.repeat?.count > 1 ? repeatNote(each) : null,
    movedBy(each) !== each ? el('p', { class: 'dim' }, 'Its place is that of ',
      button(`text window ${movedBy(each).index}`, () => select(movedBy(each).key), { class: 'link' }), '.') : null);
}
const styleChip = (name) => button(name, () => select(keyOf('style', name)),
  { class: 'chip', title: `Change style "${name}" for all its records` });
function numberInput(each) {
  return el('input', { class: 'number', inputMode: 'numeric', value: each.index, 'aria-label': 'Number of the slot',
    on: { change: (event) => renumber(each, Number.parseInt(event.target.value, 10)) } });
}
const lineButton = ({ document: { name }, line }) =>
  button(`line ${line}`, () => tell('source', { name, line }), { class: 'link', title: 'Show in the source' });
function repeatNote(each) {
  const { count, position, first } = each.record.repeat;
  return el('p', { class: 'note' }, `${position + 1} of ${count} repeated records from ${first} on. `,
    button('Write out singly', () => split(each),
      { class: 'link', title: 'Makes a table of its own of every repeated record' }));
}

// looks

function lookToMake(items) {
  const of = items.map(addressFor);
  return el('div', { class: 'empty' }, el('p', {}, state.look === 'pressed' ? 'It has no look while it is pressed.'
    : 'It has no look while the pointer is over it.'),
  button('Make one', () => edit(items[0].document.name, `Make the ${state.look} look`,
    [{ do: 'set', of, field: 'fore_colour', language: '', value: 'white' }])));
}

// rows

function row(items, names, fields) {
  const element = kept(`row ${names}`, 0, () => el('div', { class: `row of-${names.length}` }));
  return put(element, names.map((name) => cell(items, fields.get(name))));
}

function cell(items, field) {
  const value = valueOf(items, field.name);
  const origins = items.map((each) => originOf(each, field.name));
  const [{ document, record }] = items;
  return kept(`field ${field.name}`, [field, value, origins, state.look, state.language, items.map((each) => each.key),
    document.name, document.names, field.name === 'style' && [document.styles.map((each) => each.name), record.styles]],
  () => newCell(items, field, value, origins));
}

function newCell(items, field, value, origins) {
  const own = origins.some(isOwn);
  const inherited = !own && origins[0];
  const id = `field-${field.name}`;
  const input = inputFor(items, field, value, usualLanguage(items, field.name));
  const main = input.matches('input, select') ? input : input.querySelector('input, select');
  main.id = id;
  main.dataset.field = field.name;
  main.setAttribute('aria-describedby', 'field-help');
  if (field.name === 'text' || field.name === 'dest_x') main.dataset.first = '1';
  return el('div', { class: `field kind-${field.kind} ${own ? 'own' : inherited ? 'inherited' : 'unsaid'}`,
    on: { pointerenter: () => showHelp(items, field, origins), focusin: () => showHelp(items, field, origins) } },
  el('div', { class: 'label' },
    el('div', { class: 'said' }, el('label', { for: id }, labelOf(field.name, kindOf(items))),
      rawName(field.name, kindOf(items)), inherited ? el('span', { class: 'origin',
        title: `Said by ${inherited}; a change here is this record's own` }, inherited) : null),
    isSpoken(items, field.name) ? languageBadge(items, field, value.differs) : null,
    own && !items[0].record.values ? takeBack(items, field) : null), input);
}

function languageBadge(items, field, differs) {
  const title = `${differs ? 'Differs between' : 'The same in all'} languages: a change is made to ${state.language} ` +
    'only. Click to give all languages this value.';
  return button(state.language, () => setValue(items, field.name, valueOf(items, field.name).value),
    { class: 'badge', title });
}
function takeBack(items, field) {
  return iconButton('reset', `Take back ${field.name}: what a style or the default says counts again`,
    () => unsetValue(items, field.name), { class: 'icon back' });
}

function showHelp(items, field, origins) {
  const range = field.kind === 'number' && field.max > field.min ? `${field.min} to ${field.max}` : '';
  const size = field.kind === 'text' && field.size ? `at most ${field.size} characters` : '';
  const facts = [field.unit, range, size].filter(Boolean).join(', ');
  const from = origins[0] ? `said by ${isOwn(origins[0]) ? 'this record' : origins[0]}` : 'the default';
  explain(el('b', {}, labelOf(field.name, kindOf(items))), facts ? ` (${facts})` : '',
    `: ${field.help || '–'}, ${from}`);
}

export function focusProperties() {
  (panel.querySelector('[data-first]') ?? body.querySelector('input, select, button'))?.focus();
}

/** Puts the cursor into a field; faults and new slots lead here. */
function focusField(name) {
  requestAnimationFrame(() => requestAnimationFrame(() => {
    const input = body.querySelector(`[data-field="${CSS.escape(name)}"]`);
    input?.closest('details')?.setAttribute('open', '');
    input?.focus();
    input?.scrollIntoView({ block: 'center' });
  }));
}

on('project document selection view', planned(draw));
on('field', focusField);
