// The tools above the picture: zoom, what is drawn over it, arrangement, records.
import { commandIcon } from './commands.js';
import { el, find } from './dom.js';
import { zoom } from './picture.js';
import { prefer, preferences } from './preferences.js';
import { on, selected, state } from './state.js';

const icons = (...ids) => new Map(ids.map((id) => [id, commandIcon(id)]));
const rule = () => el('span', { class: 'rule' });
const shown = el('output', { 'aria-label': 'Zoom' });
const fit = commandIcon('fit');
const switches = icons('grid', 'snap', 'outlines', 'labels', 'unseen');
const arranging = icons('left', 'centre', 'right', 'top', 'middle', 'bottom');
const spreading = icons('across', 'down');
const recording = icons('forward', 'backward', 'copy', 'remove');
const gridFont = el('select', { 'aria-label': 'Font whose cells make the grid', title: 'Font whose cells make the grid',
  on: { change: () => prefer({ gridFont: Number(gridFont.value) }) } });

find('tools').append(commandIcon('minus'), shown, commandIcon('plus'), fit, rule(), ...switches.values(), gridFont,
  rule(), ...arranging.values(), ...spreading.values(), rule(), ...recording.values(), commandIcon('new'));
document.querySelector('.list-find').append(commandIcon('new'));

function draw() {
  shown.textContent = `${zoom}×`;
  fit.setAttribute('aria-pressed', String(preferences.zoom === 0));
  for (const [name, button] of switches) button.setAttribute('aria-pressed', String(preferences[name]));
  gridFont.hidden = !preferences.grid;
  gridFont.value = preferences.gridFont;
  const items = selected();
  const placed = items.filter((each) => each.rect).length;
  for (const button of arranging.values()) button.disabled = !placed;
  for (const button of spreading.values()) button.disabled = placed < 3;
  for (const button of recording.values()) button.disabled = !items.some((each) => each.kind === 'slot');
}
on('project', () => gridFont.replaceChildren(...(state.project.names.font ?? []).map((font) =>
  el('option', { value: font.number }, `${font.cell[0]} × ${font.cell[1]}  ${font.name}`))));
on('project zoom preferences selection document', draw);
