// The bar at the top: which screen, which language; undo, redo, save, play.
import { commandButton, commandIcon } from './commands.js';
import { el, find, segments } from './dom.js';
import { isBusy } from './edits.js';
import { allDocuments, helpSlots, on, showView, state, viewNames, viewOf } from './state.js';

const bar = find('bar');
const saveButton = commandButton('save', { class: 'primary state' }, 'Save');
const actions = [commandIcon('find'), commandIcon('undo'), commandIcon('redo'), saveButton,
  commandButton('play', {}, 'Play'), commandIcon('day'), commandIcon('keys')];
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
  const dirty = allDocuments().some((each) => each.dirty);
  saveButton.disabled = !dirty && !isBusy();
  saveButton.classList.toggle('dirty', dirty);
  saveButton.firstChild.textContent = dirty ? 'Save' : 'Saved';
  document.title = `${dirty ? '● ' : ''}${viewNames[state.view] ?? state.view} – Veldor screens`;
}

on('project', build);
on('project document view list queue', draw);
