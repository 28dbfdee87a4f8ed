// A slot's looks beside each other as the program draws them: at rest, under the pointer, pressed. The one that is
// chosen is shown in the picture and changed in the properties.
import { el, keeper, segments } from './dom.js';
import { clamp } from './geometry.js';
import { request, rgba, withLook } from './picture.js';
import { canPreview, HEIGHT, select, state, WIDTH } from './state.js';
import { hasLook } from './values.js';

const MARGIN = 4;
const looks = [
  { look: '', label: 'Normal' },
  { look: 'highlight', label: 'Pointer over', title: 'What is different while the pointer is over it' },
  { look: 'pressed', label: 'Pressed', title: 'What is different while it is pressed' },
];
let timer = 0;
const kept = keeper();

/** The looks to choose from. Their pictures come a moment after the last change, into room that is kept for them. */
export function looksOf(each) {
  const there = looks.filter(({ look }) => !look || hasLook(each, look));
  const drawn = each.shown?.selectable && canPreview() && there.length > 1 ? there : [];
  const area = drawn.length ? around(each.rect) : null;
  const group = kept('looks', [state.view, each.key, there, area?.width, area?.height], () => made(there, drawn, area));
  group.show(state.look);
  clearTimeout(timer);
  if (area) timer = setTimeout(() => fill(each, drawn, area, [...group.querySelectorAll('canvas')]), 250);
  return group;
}

/** With a margin, as far as it is on the screen. */
function around([x, y, w, h]) {
  const [left, top] = [clamp(x - MARGIN, 0, WIDTH - 1), clamp(y - MARGIN, 0, HEIGHT - 1)];
  return { left, top, width: clamp(w + 2 * MARGIN, 1, WIDTH - left), height: clamp(h + 2 * MARGIN, 1, HEIGHT - top) };
}

function made(there, drawn, area) {
  const canvas = (row) => (drawn.includes(row) ? el('canvas', { width: area.width, height: area.height }) : null);
  const group = segments('Look that is shown and changed', looks.map((row) => ({ value: row.look, title: row.title,
    label: el('span', {}, canvas(row), row.label, there.includes(row) ? '' : ' –') })),
  (look) => select(state.selection, { look }));
  group.classList.add('looks');
  return group;
}

async function fill(each, shown, { left, top }, canvases) {
  for (const [i, { look }] of shown.entries()) {
    try {
      const { pixels } = await rgba(request(withLook(look, each.index)));
      canvases[i].getContext('2d').putImageData(new ImageData(pixels, WIDTH, HEIGHT), -left, -top);
    } catch { /* a fault is told with the picture itself */ }
  }
}
