// The source as it is written: lines with numbers, marks at faults, edited freely and sent a moment after the last key.
import { edit } from './edits.js';
import { el } from './dom.js';
import { activeDocument, lead, on, state } from './state.js';

const WAIT = 500; // milliseconds after the last key
const area = el('textarea', { class: 'code', spellcheck: false, wrap: 'off', autocomplete: 'off',
  'aria-label': 'Source' });
const numbers = el('div', { class: 'numbers', 'aria-hidden': 'true' });
const fileName = el('span', { class: 'dim' });
export const source = el('div', { class: 'source' }, numbers, area);
source.extra = [fileName];

let shown = { name: '', text: null }; // of which document, and the text that the server has
let timer = 0;
let wish = null;

function documentToShow() {
  return state.documents.get(wish?.name) ?? activeDocument();
}

export function shownSource() {
  const document = documentToShow();
  if (!document) return;
  const unsent = area.value !== shown.text && shown.text !== null;
  if (document.name !== shown.name && unsent) send();
  if (document.name !== shown.name || (document.text !== shown.text && !unsent)) {
    const keep = document.name === shown.name ? [area.selectionStart, area.selectionEnd, area.scrollTop] : null;
    area.value = document.text;
    shown = { name: document.name, text: document.text };
    if (keep) {
      area.setSelectionRange(keep[0], keep[1]);
      area.scrollTop = keep[2];
    }
  }
  fileName.textContent = document.file.split('/').slice(-2).join('/');
  fileName.title = document.file;
  drawNumbers(document);
  if (wish?.line) goTo(wish);
}

function drawNumbers(document) {
  const count = area.value.split('\n').length;
  const faulty = new Map(document.faults.filter((each) => each.line).map((each) => [each.line,
    `${each.code} ${each.problem}`]));
  const line = lead()?.document === document ? lead().line : 0;
  const rows = [];
  for (let number = 1; number <= count; number += 1) {
    const kind = faulty.has(number) ? 'bad' : number === line ? 'here' : '';
    rows.push(el('div', { class: kind, title: faulty.get(number) ?? '' }, String(number)));
  }
  numbers.replaceChildren(...rows);
  numbers.scrollTop = area.scrollTop;
}

function goTo({ line, column = 0, width = 0 }) {
  wish = { name: wish.name };
  const lines = area.value.split('\n');
  const start = lines.slice(0, line - 1).reduce((sum, each) => sum + each.length + 1, 0);
  const from = start + Math.max(column - 1, 0);
  area.focus();
  area.setSelectionRange(from, column ? from + Math.max(width, 1) : start + (lines[line - 1]?.length ?? 0));
  const height = Number.parseFloat(getComputedStyle(area).lineHeight);
  area.scrollTop = Math.max(0, (line - 4) * height);
  numbers.scrollTop = area.scrollTop;
}

async function send() {
  clearTimeout(timer);
  const { name, text } = shown;
  const mine = area.value;
  if (text === null || mine === text) return;
  shown = { name, text: mine };
  const kept = await edit(name, 'Edit the source', [{ do: 'replace_text', of: [], text: mine }], `source ${name}`);
  if (!kept && shown.name === name) shown.text = state.documents.get(name)?.text ?? null;
}

area.addEventListener('input', () => {
  clearTimeout(timer);
  timer = setTimeout(send, WAIT);
  const document = state.documents.get(shown.name);
  if (document) drawNumbers(document);
});
area.addEventListener('blur', send);
area.addEventListener('scroll', () => { numbers.scrollTop = area.scrollTop; });
area.addEventListener('keydown', (event) => {
  if (event.key === 'Escape') area.blur();
  else if (event.ctrlKey && ['s', 'z', 'y'].includes(event.key.toLowerCase())) send(); // then the page's own keys
});
/** What is typed and not sent yet goes first, before a save. */
export const flushSource = send;

on('source', (detail) => { wish = detail; });
on('selection view list', () => { if (!wish?.line) wish = null; });
