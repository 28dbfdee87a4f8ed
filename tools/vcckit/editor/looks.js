// A slot's looks beside each other as the program draws them: at rest, under the pointer, pressed.
import { el } from './dom.js';
import { clamp } from './geometry.js';
import { request, rgba } from './picture.js';
import { HEIGHT, on, select, state, WIDTH } from './state.js';
import { hasLook } from './values.js';

const MARGIN = 4;
const looks = [
  { look: '', title: 'normal', of: () => ({ hover: null, pressed: null }) },
  { look: 'highlight', title: 'pointer over', of: (index) => ({ hover: index, pressed: null }) },
  { look: 'pressed', title: 'pressed', of: (index) => ({ hover: null, pressed: index }) },
];
let timer = 0;
let kept = { key: '', canvases: [] };

/** The row of pictures; it fills itself a moment after the last change. */
export function looksOf(each) {
  if (!each.shown.selectable || state.view === 'help') return null;
  const key = `${state.view} ${each.key}`;
  const shown = looks.filter(({ look }) => !look || hasLook(each, look));
  if (shown.length < 2) return null;
  if (kept.key !== key || kept.canvases.length !== shown.length)
    kept = { key, canvases: shown.map(() => el('canvas', { width: 1, height: 1 })) };
  const row = el('div', { class: 'looks' }, shown.map(({ look, title }, i) =>
    el('button', { type: 'button', 'aria-pressed': String(state.look === look), tabIndex: -1,
      on: { click: () => select(state.selection, { look }) } }, kept.canvases[i], title)));
  clearTimeout(timer);
  timer = setTimeout(() => fill(each, shown, kept.canvases), 250);
  return row;
}

async function fill(each, shown, canvases) {
  const [x, y, w, h] = each.rect;
  const left = clamp(x - MARGIN, 0, WIDTH - 1);
  const top = clamp(y - MARGIN, 0, HEIGHT - 1);
  const width = clamp(w + 2 * MARGIN, 1, WIDTH - left);
  const height = clamp(h + 2 * MARGIN, 1, HEIGHT - top);
  for (const [i, { of }] of shown.entries()) {
    try {
      const { data } = await rgba(request(of(each.index)));
      Object.assign(canvases[i], { width, height });
      canvases[i].getContext('2d').putImageData(data, -left, -top);
    } catch { /* a fault is told with the picture itself */ }
  }
}
on('view', () => { kept = { key: '', canvases: [] }; });
