// Frames of everything that can be pointed at, over the picture.
import { el, find, lay } from './dom.js';
import { inside } from './geometry.js';
import { isOfView, zoom } from './picture.js';
import { preferences } from './preferences.js';
import { faultFinder, HEIGHT, on, placedItems, selected, state, WIDTH } from './state.js';
import { canResize } from './arrange.js';

const layer = find('frames');
const elements = new Map();

/** Frames that a gesture moves before the server has answered: key to rectangle. */
let moved = new Map();
export function moveFrames(rects) {
  moved = rects;
  draw();
}

export const isBackground = ([, , w, h]) => w * h >= WIDTH * HEIGHT * 0.9;

/**
 * Keys of what lies at a place: the smallest first, so that a frame around buttons does not hide them; of the same size
 * the one that is drawn last. What is not drawn only when it is to be seen or chosen.
 */
export function keysAt(x, y) {
  const area = ({ rect }) => rect[2] * rect[3];
  return placedItems()
    .filter((each) => inside(each.rect, x, y) && (isSeen(each) || state.selection.includes(each.key)))
    .reverse()
    .sort((a, b) => area(a) - area(b))
    .map((each) => each.key);
}
export function isSeen(each) {
  return preferences.unseen || !(each.shown?.hidden);
}

/** None over the picture of another screen, while the new one is on its way. */
const showLayer = () => { layer.hidden = !isOfView(); };

function draw() {
  showLayer();
  layer.classList.toggle('outlines', preferences.outlines);
  layer.classList.toggle('labels', preferences.labels);
  const isFaulty = faultFinder();
  const items = placedItems().filter((each) => isSeen(each) || state.selection.includes(each.key));
  const keep = new Set(items.map((each) => each.key));
  for (const [key, element] of elements) {
    if (keep.has(key)) continue;
    element.remove();
    elements.delete(key);
  }
  const lead = state.selection.at(-1);
  for (const each of items) {
    let element = elements.get(each.key);
    if (!element) {
      element = el('div', {}, el('span', { class: 'tag' }));
      element.dataset.key = each.key;
      elements.set(each.key, element);
      layer.append(element);
    }
    const [x, y, w, h] = moved.get(each.key) ?? each.rect;
    lay(element, [x, y, Math.max(w, 4 / zoom), Math.max(h, 4 / zoom)], zoom);
    element.className = ['frame', state.selection.includes(each.key) ? 'selected' : 'plain',
      each.key === lead && 'primary', each.key === state.hovered && 'hovered', each.shown?.hidden && 'unseen',
      isFaulty(each) && 'faulty'].filter(Boolean).join(' ');
    const tag = element.firstChild;
    tag.replaceChildren(el('b', {}, each.kind === 'window' ? `+${each.index}` : String(each.index)), each.name);
    tag.classList.toggle('inside', y * zoom < 18);
    showHandles(element, each.key === lead && selected().length === 1 ? handlesFor(each, w * zoom, h * zoom) : []);
  }
}

/** A small frame has fewer handles, so that it can still be seen and dragged. */
function handlesFor(each, width, height) {
  const [low, narrow] = [height < 30, width < 30];
  if (!canResize(each)) return [];
  if (low) return narrow ? ['se'] : ['w', 'e'];
  return narrow ? ['n', 's'] : ['n', 's', 'w', 'e', 'nw', 'ne', 'sw', 'se'];
}

function showHandles(element, wanted) {
  const there = element.querySelectorAll('.handle');
  if (there.length === wanted.length && wanted.every((side, i) => there[i].dataset.side === side)) return;
  there.forEach((each) => each.remove());
  element.append(...wanted.map((side) => {
    const handle = el('div', { class: `handle ${side}` });
    handle.dataset.side = side;
    return handle;
  }));
}

/** Brings what is chosen into view. */
function reveal() {
  const viewport = find('viewport');
  const each = selected().at(-1);
  if (!each?.rect) return;
  const surface = find('surface');
  const [x, y, w, h] = each.rect.map((part) => part * zoom);
  const [left, top] = [surface.offsetLeft + x, surface.offsetTop + y];
  if (left < viewport.scrollLeft || left + w > viewport.scrollLeft + viewport.clientWidth)
    viewport.scrollLeft = left + w / 2 - viewport.clientWidth / 2;
  if (top < viewport.scrollTop || top + h > viewport.scrollTop + viewport.clientHeight)
    viewport.scrollTop = top + h / 2 - viewport.clientHeight / 2;
}

on('document selection view zoom preferences hovered list faults project', draw);
on('selection', reveal);
on('picture', showLayer);
