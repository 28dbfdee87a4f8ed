// The panel under the picture: faults, texts of both languages, source. Its height is kept for each of them.
import { faults } from './faults.js';
import { el, find, segments } from './dom.js';
import { clamp } from './geometry.js';
import { history } from './history.js';
import { prefer, preferences } from './preferences.js';
import { source } from './source.js';
import { allFaults, on } from './state.js';
import { texts } from './texts.js';

const panel = find('below');
const divider = find('divider');
const count = el('span', { class: 'count' }, '0');
const parts = [
  { value: 'faults', element: faults, height: 5, label: el('span', {}, 'Faults ', count),
    title: 'What check finds (F8)' },
  { value: 'texts', element: texts, height: 15, label: 'Texts', title: 'Texts of both languages side by side' },
  { value: 'source', element: source, height: 22, label: 'Source', title: 'The source as it is written (F9)' },
  { value: 'history', element: history, height: 11, label: 'History',
    title: 'All steps, to go back and forth in (Ctrl+H)' },
];
const tabs = segments('List below', parts, showBelow);
const extra = el('div', { class: 'below-extra grow' });
panel.append(el('div', { class: 'below-head' }, tabs, extra), ...parts.map((part) => part.element));

const rem = () => Number.parseFloat(getComputedStyle(document.documentElement).fontSize);

export function showBelow(name) {
  prefer({ below: name });
  draw();
}

function draw() {
  const { value, element, height } = parts.find((each) => each.value === preferences.below) ?? parts[0];
  tabs.show(value);
  for (const each of parts) each.element.hidden = each.element !== element;
  const rems = Number(preferences.belowHeight[value]) || height;
  panel.style.height = `${Math.min(rems * rem(), innerHeight * 0.7)}px`;
  extra.replaceChildren(...(element.extra ?? []));
  element.draw();
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
