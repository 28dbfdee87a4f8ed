// The bar at the top: which screen, which language, which look; undo, redo, save, play.
import { post } from './api.js';
import { el, find, iconButton, segments } from './dom.js';
import { isBusy, redo, save, undo } from './edits.js';
import { showKeys } from './keys.js';
import { say } from './messages.js';
import { isDark, prefer } from './preferences.js';
import { flushSource } from './source.js';
import { activeDocument, helpSlots, on, showView, state, viewOf } from './state.js';

const bar = find('bar');
const viewNames = { menu: 'Menu', options: 'Options', help: 'Help', message: 'Message',
  vcc_options_info: 'Explanations' };
const hasOptions = () => Boolean(viewOf(state.view)?.rows);
const undoButton = iconButton('undo', 'Undo', () => undo());
const redoButton = iconButton('redo', 'Redo', () => redo());
const saveButton = el('button', { type: 'button', class: 'primary state', on: { click: () => saveAll() } }, 'Save');
const playButton = el('button', { type: 'button', title: 'Start the program on what is saved (F5)',
  on: { click: () => playNow() } }, 'Play');
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
    undoButton, redoButton, saveButton, playButton,
    iconButton('day', 'Light or dark', () => prefer({ theme: isDark() ? 'light' : 'dark' })),
    iconButton('keys', 'Keys (?)', showKeys));
}

function draw() {
  if (!parts.views) return;
  parts.views.show(state.view);
  parts.languages.show(state.language);
  parts.looks.show(state.preview);
  parts.looks.hidden = state.view === 'help' || state.view === 'message';
  parts.row.hidden = parts.module.hidden = !hasOptions();
  parts.row.value = state.row ?? '';
  parts.module.value = state.module ?? '';
  drawAbout();
  const document = activeDocument();
  const label = (button, what, key, text) => {
    button.disabled = !text && !isBusy();
    button.title = text ? `${what}: ${text} (${key})` : `Nothing to ${what.toLowerCase()} (${key})`;
    button.setAttribute('aria-label', button.title);
  };
  label(undoButton, 'Undo', 'Ctrl+Z', document?.undo);
  label(redoButton, 'Redo', 'Ctrl+Y', document?.redo);
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

export async function saveAll() {
  await flushSource();
  return save();
}

export async function playNow() {
  if ([...state.documents.values()].some((each) => each.dirty) && !await saveAll()) return;
  try {
    await post('play', {});
    say('The program starts.');
  } catch (error) {
    say(error.message, 'bad');
  }
}

on('project', build);
on('project document view selection list queue', draw);
