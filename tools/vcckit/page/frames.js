// Frames of everything that can be pointed at, over the picture.
import { el, find, keeper, lay, put } from './dom.js';
import { inside } from './geometry.js';
import { isOfView, zoom } from './picture.js';
import { preferences } from './preferences.js';
import { faultFinder, HEIGHT, on, placedItems, selected, state, WIDTH } from './state.js';
import { canResize } from './arrange.js';

const layer = find('frames');
const kept = keeper();

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
    .filter((each) => inside(each.rect, x, y) && isThere(each))
    .reverse()
    .sort((a, b) => area(a) - area(b))
    .map((each) => each.key);
}
export const isSeen = (each) => preferences.unseen || !each.shown?.hidden;
const isThere = (each) => isSeen(each) || state.selection.includes(each.key);

/** None over the picture of another screen, while the new one is on its way. */
const showLayer = () => { layer.hidden = !isOfView(); };

function draw() {
  showLayer();
  layer.classList.toggle('outlines', preferences.outlines);
  layer.classList.toggle('labels', preferences.labels);
  const isFaulty = faultFinder();
  const frames = placedItems().filter(isThere).map((each) => {
    const [x, y, w, h] = (moved.get(each.key) ?? each.rect).map((part) => part * zoom);
    const isLead = each.key === state.selection.at(-1);
    const classes = ['frame', state.selection.includes(each.key) ? 'selected' : 'plain', isLead && 'primary',
      each.key === state.hovered && 'hovered', each.shown?.hidden && 'unseen', isFaulty(each) && 'faulty'];
    const handles = isLead && selected().length === 1 ? handlesFor(each, w, h) : [];
    return kept(each.key, [each.name, x, y, w, h, classes, handles], () => lay(el('div', {
      'data-key': each.key, class: classes.filter(Boolean).join(' ') },
    el('span', { class: y < 18 ? 'tag inside' : 'tag' },
      el('b', {}, each.kind === 'window' ? `+${each.index}` : each.index), each.name),
    handles.map((side) => el('div', { class: `handle ${side}`, 'data-side': side }))),
    [x, y, Math.max(w, 4), Math.max(h, 4)], 1));
  });
  const ofGestures = [...layer.children].filter((each) => !each.matches('.frame'));
  put(layer, [...frames, ...ofGestures]);
}

/** A small frame has fewer handles, so that it can still be seen and dragged. */
function handlesFor(each, width, height) {
  const [low, narrow] = [height < 30, width < 30];
  if (!canResize(each)) return [];
  if (low) return narrow ? ['se'] : ['w', 'e'];
  return narrow ? ['n', 's'] : ['n', 's', 'w', 'e', 'nw', 'ne', 'sw', 'se'];
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
