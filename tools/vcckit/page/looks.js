// A slot's looks beside each other as the program draws them: at rest, under the pointer, pressed.
import { el, segments } from './dom.js';
import { clamp } from './geometry.js';
import { request, rgba } from './picture.js';
import { HEIGHT, on, select, state, WIDTH } from './state.js';
import { hasLook } from './values.js';

const MARGIN = 4;
const looks = [
  { look: '', label: 'Normal', of: () => ({ hover: null, pressed: null }) },
  { look: 'highlight', label: 'Pointer over', title: 'What is different while the pointer is over it',
    of: (index) => ({ hover: index, pressed: null }) },
  { look: 'pressed', label: 'Pressed', title: 'What is different while it is pressed',
    of: (index) => ({ hover: null, pressed: index }) },
];
let timer = 0;
let kept = { key: '', canvases: [] };

/** The looks to choose from; their pictures come a moment after the last change. */
export function looksOf(each) {
  const key = `${state.view} ${each.key}`;
  const there = looks.filter(({ look }) => !look || hasLook(each, look));
  const drawn = each.shown.selectable && state.view !== 'help' && there.length > 1 ? there : [];
  if (kept.key !== key || kept.canvases.length !== drawn.length)
    kept = { key, canvases: drawn.map(() => el('canvas', { width: 1, height: 1 })) };
  const group = segments('Look that is changed', looks.map((row) => ({ value: row.look, title: row.title,
    label: el('span', {}, kept.canvases[drawn.indexOf(row)], row.look && !hasLook(each, row.look) ? `${row.label} –`
      : row.label) })), (look) => select(state.selection, { look }));
  group.classList.add('looks');
  group.show(state.look);
  clearTimeout(timer);
  if (drawn.length) timer = setTimeout(() => fill(each, drawn, kept.canvases), 250);
  return group;
}

async function fill(each, shown, canvases) {
  const [x, y, w, h] = each.rect;
  const left = clamp(x - MARGIN, 0, WIDTH - 1);
  const top = clamp(y - MARGIN, 0, HEIGHT - 1);
  const width = clamp(w + 2 * MARGIN, 1, WIDTH - left);
  const height = clamp(h + 2 * MARGIN, 1, HEIGHT - top);
  for (const [i, { of }] of shown.entries()) {
    try {
      const { pixels } = await rgba(request(of(each.index)));
      Object.assign(canvases[i], { width, height });
      canvases[i].getContext('2d').putImageData(new ImageData(pixels, WIDTH, HEIGHT), -left, -top);
    } catch { /* a fault is told with the picture itself */ }
  }
}
on('view', () => { kept = { key: '', canvases: [] }; });
