// The bar at the top: which screen, which language, which look; undo, redo, save, play.
import { commandButton, commandIcon, hintOf } from './commands.js';
import { el, find, segments } from './dom.js';
import { isBusy } from './edits.js';
import { activeDocument, helpSlots, lead, on, showView, state, viewOf } from './state.js';

const bar = find('bar');
const viewNames = { menu: 'Menu', options: 'Options', help: 'Help', message: 'Message',
  vcc_options_info: 'Explanations' };
const hasOptions = () => Boolean(viewOf(state.view)?.rows);
const buttons = { undo: commandIcon('undo'), redo: commandIcon('redo') };
const saveButton = commandButton('save', { class: 'primary state' }, 'Save');
let parts = {};

function build() {
  const { project } = state;
  const select = (label, choices, key) => el('select', { 'aria-label': label, title: label,
    on: { change: (event) => showView({ [key]: event.target.value === '' ? null : Number(event.target.value) }) } },
  choices.map(({ number, name }) => el('option', { value: number }, name)));
  const options = viewOf('options');
  parts = {
    views: segments('Screen', project.views.map(({ view }, i) => ({ value: view, label: viewNames[view] ?? view,
      title: `Screen ${view} (Ctrl+${i + 1})` })), (view) => showView({ view })),
    row: select('Option whose values are shown', [{ number: '', name: 'no values' }, ...(options?.rows ?? [])], 'row'),
    module: select('Module whose options are shown', options?.modules ?? [], 'module'),
    about: el('select', { 'aria-label': 'Slot whose help is shown', title: 'Slot whose help is shown',
      on: { change: (event) => showView({ about: Number(event.target.value) }) } }),
    languages: segments('Language', project.languages.map(({ code, name }) => ({ value: code, label: code.toUpperCase(),
      title: `${name} (L)` })), (language) => showView({ language })),
    looks: segments('Look of the chosen slot', [{ value: 'rest', label: 'At rest' },
      { value: 'hover', label: 'Pointer over', title: 'As with the pointer over the chosen slot (H)' },
      { value: 'pressed', label: 'Pressed' }], (preview) => showView({ preview })),
  };
  bar.replaceChildren(el('span', { class: 'brand' }, 'Veldor screens'), parts.views, parts.row, parts.module,
    parts.about, parts.languages, parts.looks,
    el('span', { class: 'folder grow', title: `${project.folder}\nSources: ${project.screens_folder}` },
      project.folder.split('/').pop()),
    buttons.undo, buttons.redo, saveButton, commandButton('play', {}, 'Play'), commandIcon('day'),
    commandIcon('keys'));
}

function draw() {
  if (!parts.views) return;
  parts.views.show(state.view);
  parts.languages.show(state.language);
  parts.looks.show(state.preview);
  for (const button of [...parts.looks.children].slice(1)) button.disabled = lead()?.kind !== 'slot';
  parts.looks.hidden = state.view === 'help' || state.view === 'message';
  parts.row.hidden = parts.module.hidden = !hasOptions();
  parts.row.value = state.row ?? '';
  parts.module.value = state.module ?? '';
  drawAbout();
  const document = activeDocument();
  for (const [what, button] of Object.entries(buttons)) {
    const step = document?.[what];
    button.disabled = !step && !isBusy();
    button.title = step ? hintOf(what).replace(' (', `: ${step} (`) : `Nothing to ${what}`;
    button.setAttribute('aria-label', button.title);
  }
  const dirty = [...state.documents.values()].filter((each) => each.dirty).map((each) => each.name);
  saveButton.disabled = !dirty.length && !isBusy();
  saveButton.classList.toggle('dirty', dirty.length > 0);
  saveButton.firstChild.textContent = dirty.length ? 'Save' : 'Saved';
  saveButton.title = dirty.length ? `Unsaved: ${dirty.join(', ')} (Ctrl+S)` : 'Everything is saved (Ctrl+S)';
  globalThis.document.title = `${dirty.length ? '● ' : ''}${viewNames[state.view] ?? state.view} – Veldor screens`;
}

/** Help is about a slot of the menu: those that have a page. */
function drawAbout() {
  parts.about.hidden = state.view !== 'help';
  if (state.view !== 'help') return;
  parts.about.replaceChildren(...helpSlots().map((each) => el('option', { value: each.index },
    `${each.index} ${each.name}`)));
  parts.about.value = state.about ?? '';
}

on('project', build);
on('project document view selection list queue', draw);
