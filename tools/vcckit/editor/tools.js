// The tools above the picture: zoom, what is drawn over it, arrangement, records.
import { align, distribute } from './arrange.js';
import { el, find, iconButton } from './dom.js';
import { clamp } from './geometry.js';
import { zoom, zoomTo } from './picture.js';
import { prefer, preferences } from './preferences.js';
import { copySelected, createSlot, removeSelected, reorder } from './records.js';
import { on, selected, state } from './state.js';

const switches = [
  ['grid', 'Grid of cells (G)'], ['snap', 'Snap to edges, or to the grid while it is shown (S)'],
  ['outlines', 'Frames of all slots (F)'], ['labels', 'Numbers and names of all slots'],
  ['unseen', 'Hidden slots too'],
];
const aligns = [
  ['left', 'Align left'], ['centre', 'Align centre'], ['right', 'Align right'], ['top', 'Align top'],
  ['middle', 'Align middle'], ['bottom', 'Align bottom'],
];
const rule = () => el('span', { class: 'rule' });
const shown = el('output', { 'aria-label': 'Zoom' });
const buttons = new Map(switches.map(([name, label]) =>
  [name, iconButton(name, label, () => prefer({ [name]: !preferences[name] }))]));
const arranging = aligns.map(([how, label]) => iconButton(how, label, () => align(how)));
const spreading = [iconButton('across', 'Same gaps across', () => distribute(0)),
  iconButton('down', 'Same gaps down', () => distribute(1))];
const recording = [iconButton('forward', 'Forward: drawn later (Page Up)', () => reorder(1)),
  iconButton('backward', 'Backward: drawn earlier (Page Down)', () => reorder(-1)),
  iconButton('copy', 'Copy (Ctrl+D)', () => copySelected()),
  iconButton('remove', 'Delete (Del)', () => removeSelected())];
const fit = iconButton('fit', 'As large as fits (0)', () => zoomTo(0));
const gridFont = el('select', { 'aria-label': 'Font whose cells make the grid', title: 'Font whose cells make the grid',
  on: { change: () => prefer({ gridFont: Number(gridFont.value) }) } });

find('tools').append(iconButton('minus', 'Smaller (−)', () => zoomTo(clamp(zoom - 1, 1, 4))), shown,
  iconButton('plus', 'Larger (+)', () => zoomTo(clamp(zoom + 1, 1, 4))), fit, rule(), ...buttons.values(), gridFont,
  rule(), ...arranging, ...spreading, rule(), ...recording,
  iconButton('text', 'New slot (N)', () => createSlot()));

function draw() {
  shown.textContent = `${zoom}×`;
  fit.setAttribute('aria-pressed', String(preferences.zoom === 0));
  for (const [name, button] of buttons) button.setAttribute('aria-pressed', String(preferences[name]));
  gridFont.hidden = !preferences.grid;
  gridFont.value = preferences.gridFont;
  const items = selected();
  const placed = items.filter((each) => each.rect).length;
  for (const button of arranging) button.disabled = !placed;
  for (const button of spreading) button.disabled = placed < 3;
  for (const button of recording) button.disabled = !items.some((each) => each.kind === 'slot');
}
on('project', () => gridFont.replaceChildren(...(state.project.names.font ?? []).map((font) =>
  el('option', { value: font.number }, `${font.cell[0]} × ${font.cell[1]}  ${font.name}`))));
on('project zoom preferences selection document', draw);
