// The panel under the picture: faults, texts of both languages, source. Its height is kept for each of them.
import { draw as drawFaults, faults } from './faults.js';
import { el, find, segments } from './dom.js';
import { clamp } from './geometry.js';
import { draw as drawHistory, history } from './history.js';
import { prefer, preferences } from './preferences.js';
import { shownSource, source } from './source.js';
import { allFaults, on } from './state.js';
import { drawTexts, texts } from './texts.js';

const panel = find('below');
const divider = find('divider');
const parts = {
  faults: { element: faults, draw: drawFaults, height: 5 },
  texts: { element: texts, draw: drawTexts, height: 15 },
  source: { element: source, draw: shownSource, height: 22 },
  history: { element: history, draw: drawHistory, height: 11 },
};

const count = el('span', { class: 'count' }, '0');
const tabs = segments('List below', [
  { value: 'faults', label: el('span', {}, 'Faults ', count), title: 'What check finds (F8)' },
  { value: 'texts', label: 'Texts', title: 'Texts of both languages side by side' },
  { value: 'source', label: 'Source', title: 'The source as it is written (F9)' },
  { value: 'history', label: 'History', title: 'All steps, to go back and forth in (Ctrl+H)' },
], (value) => showBelow(value));
const extra = el('div', { class: 'below-extra grow' });
panel.append(el('div', { class: 'below-head' }, tabs, extra), ...Object.values(parts).map((part) => part.element));

const rem = () => Number.parseFloat(getComputedStyle(document.documentElement).fontSize);

export function showBelow(name) {
  prefer({ below: name });
  draw();
}

function draw() {
  const name = parts[preferences.below] ? preferences.below : 'faults';
  tabs.show(name);
  for (const [each, part] of Object.entries(parts)) part.element.hidden = each !== name;
  const height = Number(preferences.belowHeight[name]) || parts[name].height;
  panel.style.height = `${Math.min(height * rem(), innerHeight * 0.7)}px`;
  extra.replaceChildren(...(parts[name].element.extra ?? []));
  parts[name].draw();
  const all = allFaults().length;
  count.textContent = all;
  count.classList.toggle('bad', all > 0);
}

function resizeTo(rems) {
  const height = clamp(rems, 2.4, innerHeight * 0.7 / rem());
  prefer({ belowHeight: { ...preferences.belowHeight, [preferences.below]: Math.round(height * 10) / 10 } });
  panel.style.height = `${height * rem()}px`;
}
divider.addEventListener('pointerdown', (event) => {
  const [start, before] = [event.clientY, panel.clientHeight];
  divider.setPointerCapture(event.pointerId);
  divider.onpointermove = (moved) => resizeTo((before + start - moved.clientY) / rem());
  divider.onpointerup = () => { divider.onpointermove = null; };
});
divider.addEventListener('keydown', (event) => {
  const by = { ArrowUp: 1, ArrowDown: -1 }[event.key];
  if (!by) return;
  resizeTo(panel.clientHeight / rem() + by);
  event.preventDefault();
  event.stopPropagation();
});
on('project document faults selection view list', draw);
on('source', () => showBelow('source'));
on('unsaved', () => showBelow('faults'));
