// The tools above the picture: zoom, what is drawn over it, arrangement, records.
import { commandIcon } from './commands.js';
import { el, find } from './dom.js';
import { zoom } from './picture.js';
import { prefer, preferences } from './preferences.js';
import { on, state } from './state.js';

const rule = () => el('span', { class: 'rule' });
const shown = el('output', { 'aria-label': 'Zoom' });
const gridFont = el('select', { 'aria-label': 'Font whose cells make the grid', title: 'Font whose cells make the grid',
  on: { change: () => prefer({ gridFont: Number(gridFont.value) }) } });
const icons = (ids) => ids.split(' ').map(commandIcon);

find('tools').append(...icons('minus'), shown, ...icons('plus fit closer'), rule(),
  ...icons('grid snap outlines labels unseen'), gridFont, rule(),
  ...icons('left centre right top middle bottom across down'), rule(), ...icons('forward backward copy remove'), rule(),
  ...icons('text button picture window buffer'));

const pictures = el('datalist', { id: 'pictures' });
document.body.append(pictures);

on('project', () => pictures.replaceChildren(...state.project.pictures.map((value) => el('option', { value }))));
on('project', () => gridFont.replaceChildren(...(state.project.names.font ?? []).map((font) =>
  el('option', { value: font.number }, `${font.cell[0]} × ${font.cell[1]}  ${font.name}`))));
on('project zoom preferences', () => {
  shown.textContent = `${Math.round(zoom * 100) / 100}×`;
  gridFont.hidden = !preferences.grid;
  gridFont.value = preferences.gridFont;
});
