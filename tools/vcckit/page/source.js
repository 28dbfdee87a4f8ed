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

// Of which document, and the text that what is typed is based on: the server brings both together.
let shown = { name: '', text: null };
let timer = 0;
let wish = null;

// A text area has only one kind of line end; the source keeps its own.
const plain = (text) => text.replace(/\r\n?/g, '\n');

/** What is typed, with the line ends of the text that it was made from; new lines end as its first one does. */
function withEnds(base, typed) {
  const ends = base.match(/\r\n?|\n/g) ?? [];
  if (ends.every((end) => end === '\n')) return typed;
  const before = plain(base);
  const shorter = Math.min(before.length, typed.length);
  let [head, tail] = [0, 0];
  while (head < shorter && before[head] === typed[head]) head += 1;
  while (tail < shorter - head && before.at(-1 - tail) === typed.at(-1 - tail)) tail += 1;
  const count = (text) => text.split('\n').length - 1;
  const [above, below, all] = [count(before.slice(0, head)), count(before.slice(before.length - tail)), count(typed)];
  let number = -1;
  return typed.replace(/\n/g, () => {
    number += 1;
    return number < above ? ends[number] : number >= all - below ? ends.at(number - all) : ends[0];
  });
}

source.draw = () => {
  const document = state.documents.get(wish?.name) ?? activeDocument();
  if (!document) return;
  const unsent = shown.text !== null && area.value !== plain(shown.text);
  if (document.name !== shown.name && unsent) send();
  if (document.name !== shown.name || (document.text !== shown.text && !unsent)) {
    const keep = document.name === shown.name ? [area.selectionStart, area.selectionEnd, area.scrollTop] : null;
    area.value = plain(document.text);
    shown = { name: document.name, text: document.text };
    if (keep) {
      area.setSelectionRange(keep[0], keep[1]);
      area.scrollTop = keep[2];
    }
  }
  fileName.textContent = document.file.split('/').slice(-2).join('/') +
    (document.made ? ' – written with the first change' : '');
  fileName.title = document.file;
  drawNumbers(document);
  if (wish?.line) goTo(wish);
};

function drawNumbers(document) {
  const faulty = new Map(document.faults.filter((each) => each.line).map((each) => [each.line,
    `${each.code} ${each.problem}`]));
  const line = lead()?.document === document ? lead().line : 0;
  numbers.replaceChildren(...area.value.split('\n').map((_, i) => el('div', {
    class: faulty.has(i + 1) ? 'bad' : i + 1 === line ? 'here' : '', title: faulty.get(i + 1) ?? '' }, i + 1)));
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
  const { name, text: base } = shown;
  if (base === null || area.value === plain(base)) return;
  const text = withEnds(base, area.value);
  shown = { name, text };
  const kept = await edit(name, 'Edit the source', [{ do: 'replace_text', base, text }], `source ${name}`);
  if (!kept && shown.name === name && shown.text === text) shown.text = base; // it goes along the next time
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
