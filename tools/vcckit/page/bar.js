// The bar at the top: which screen, which language; undo, redo, save, play. The tools above the picture: zoom, what is
// drawn over it, arrangement, records.
import { commandButton, commandIcon } from './commands.js';
import { el, find, segments } from './dom.js';
import { isBusy } from './edits.js';
import { zoom } from './picture.js';
import { prefer, preferences } from './preferences.js';
import { helpSlots, on, showView, state, unsavedDocuments, viewNames, viewOf } from './state.js';

const bar = find('bar');
const saveButton = commandButton('save', 'Save', { class: 'primary state' });
const icons = (ids) => ids.split(' ').map(commandIcon);
const actions = [...icons('find undo redo'), saveButton, commandButton('play', 'Play'), ...icons('day keys')];
let parts = {};

function build() {
  const { project } = state;
  const select = (label, key, choices) => el('select', { 'aria-label': label, title: label,
    on: { change: (event) => showView({ [key]: event.target.value === '' ? null : Number(event.target.value) }) } },
  choices.map(({ number, name }) => el('option', { value: number }, name)));
  const options = viewOf('options');
  parts = {
    views: segments('Screen', project.views.map(({ view }, i) => ({ value: view, label: viewNames[view] ?? view,
      title: `Screen ${view} (Ctrl+${i + 1})` })), (view) => showView({ view })),
    row: select('Option whose values are shown', 'row', [{ number: '', name: 'no values' }, ...(options?.rows ?? [])]),
    module: select('Module whose options are shown', 'module', options?.modules ?? []),
    about: select('Slot whose help is shown', 'about', []),
    languages: segments('Language', project.languages.map(({ code, name }) => ({ value: code, label: code.toUpperCase(),
      title: `${name} (L)` })), (language) => showView({ language })),
  };
  bar.replaceChildren(el('span', { class: 'brand' }, 'Veldor screens'), ...Object.values(parts),
    el('span', { class: 'folder grow dim', title: `${project.folder}\nSources: ${project.screens_folder}` },
      project.folder.split('/').pop()), ...actions);
}

function draw() {
  if (!parts.views) return;
  parts.views.show(state.view);
  parts.languages.show(state.language);
  parts.row.hidden = parts.module.hidden = !viewOf(state.view)?.rows;
  parts.row.value = state.row ?? '';
  parts.module.value = state.module ?? '';
  parts.about.hidden = state.view !== 'help';
  parts.about.replaceChildren(...helpSlots().map((each) => el('option', { value: each.index },
    `${each.index} ${each.name}`)));
  parts.about.value = state.about ?? '';
  const dirty = unsavedDocuments().length > 0;
  saveButton.disabled = !dirty && !isBusy();
  saveButton.classList.toggle('dirty', dirty);
  saveButton.firstChild.textContent = dirty ? 'Save' : 'Saved';
  document.title = `${dirty ? '● ' : ''}${viewNames[state.view] ?? state.view} – Veldor screens`;
}

on('project', build);
on('project document view list queue', draw);

// tools

const rule = () => el('span', { class: 'rule' });
const shown = el('output', { 'aria-label': 'Zoom' });
const gridFont = el('select', { 'aria-label': 'Font whose cells make the grid', title: 'Font whose cells make the grid',
  on: { change: () => prefer({ gridFont: Number(gridFont.value) }) } });

find('tools').append(...icons('minus'), shown, ...icons('plus fit closer'), rule(),
  ...icons('grid snap outlines labels unseen'), gridFont, rule(),
  ...icons('left centre right top middle bottom across down'), rule(), ...icons('forward backward copy remove'), rule(),
  ...icons('text button picture window buffer'));

const pictures = el('datalist', { id: 'pictures' });
document.body.append(pictures);

on('project', () => {
  pictures.replaceChildren(...state.project.pictures.map((value) => el('option', { value })));
  gridFont.replaceChildren(...(state.project.names.font ?? []).map((font) =>
    el('option', { value: font.number }, `${font.cell[0]} × ${font.cell[1]}  ${font.name}`)));
});
on('project zoom preferences', () => {
  shown.textContent = `${Math.round(zoom * 100) / 100}×`;
  gridFont.hidden = !preferences.grid;
  gridFont.value = preferences.gridFont;
});
