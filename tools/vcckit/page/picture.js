// The screen as the program draws it: asked for after every change, one request at a time, the newest wish wins.
import { get } from './api.js';
import { banner } from './dialogs.js';
import { find } from './dom.js';
import { around } from './geometry.js';
import { preferences, prefer } from './preferences.js';
import { allDocuments, canPreview, HEIGHT, lead, on, SCREEN, screenDocument, selected, state, tell, viewOf, WIDTH }
  from './state.js';

const canvas = find('picture');
const context = canvas.getContext('2d', { alpha: false, willReadFrequently: true });
const viewport = find('viewport');
const surface = find('surface');

let wished = null;
let fetching = ''; // what the picture is for that is on its way
let shownFor = '';
let shownView = ''; // and in which language
let number = 0; // of the picture that is shown; the server sends what differs from it
let along = ''; // what was asked for along with a change
let arrived = null;

/** How a picture is asked for in which a slot has this look. */
export const withLook = (look, index) =>
  ({ hover: look === 'highlight' ? index : null, pressed: look === 'pressed' ? index : null });

/** What a picture of the view is asked for with; the renderer's own words. */
export function request(change = {}) {
  const { picture, rows: options } = viewOf(state.view);
  const index = lead()?.kind === 'slot' && canPreview() ? lead().index : null;
  return { view: picture ?? state.view, language: state.language, row: options ? state.row : null,
    module: options ? state.module : null, ...withLook(state.look, index),
    ...(state.view === 'help' && { hover: state.about }), ...change };
}

/** Every document that a view is drawn from decides on its picture. */
const revisionOfAll = () => allDocuments().map((each) => each.revision).join('.');

export function refresh({ always = false } = {}) {
  if (!state.project || !viewOf(state.view)) return;
  if (always) number = 0; // another process may have begun to count anew
  const wish = request();
  const key = JSON.stringify(wish) + revisionOfAll();
  if (arrived?.wish === JSON.stringify(wish)) {
    wished = null;
    show(key, arrived);
    return;
  }
  if (key === (wished?.key || fetching || shownFor) && !always) return;
  wished = { key, wish };
  if (!fetching) work();
}

/** What a change is sent with, so that the picture comes along. */
export function wishAlong() {
  const view = request();
  along = { wish: JSON.stringify(view), have: number };
  return { view, have: number };
}
/** The picture that has come along with a change; it is shown when the documents are known that it is drawn from. */
export function arrive({ fault, rect, ...picture }, pixels) {
  arrived = null;
  // What does not fit is asked for by itself, and so is a fault, which is told then.
  if (fault || along.have !== number || along.wish !== JSON.stringify(request())) return;
  arrived = { ...along, ...picture, rect, pixels };
}

async function work() {
  while (wished) {
    const { key, wish } = wished;
    fetching = key;
    wished = null;
    try {
      const image = await rgba({ ...wish, keep: 1 });
      if (image.number > number) // else a newer one has come along with a change
        show(key, { ...image, wish: JSON.stringify(wish) });
    } catch (error) {
      if (shownView !== viewIn(wish)) context.clearRect(0, 0, WIDTH, HEIGHT); // that of another screen
      shownView = viewIn(wish);
      banner('picture', `The picture is an older one: ${error.message}`, [], 'bad');
      tell('picture');
    }
  }
  fetching = '';
}

function show(key, picture) {
  const [x, y, width, height] = picture.rect;
  if (width > 0) context.putImageData(new ImageData(picture.pixels, width, height), x, y);
  arrived = null;
  number = picture.number;
  shownFor = key;
  shownView = viewIn(JSON.parse(picture.wish));
  canvas.dataset.revision = picture.revision;
  banner('picture');
  tell('picture');
}

/** The pixels of a view. */
export async function rgba(wish) {
  const response = await get('picture', { ...wish, revision: screenDocument()?.revision });
  const told = (name) => Number(response.headers.get(name));
  return { pixels: new Uint8ClampedArray(await response.arrayBuffer()), rect: SCREEN,
    number: told('X-Number'), revision: told('X-Revision') };
}

const viewIn = ({ view, language }) => `${view} ${language}`;
/** Whether the picture is one of what is chosen at the top, be it an older one. */
export const isOfView = () => Boolean(viewOf(state.view)) && shownView === viewIn(request());

/** Whether what is shown is drawn from the newest of everything. */
export function isCurrent() {
  return Boolean(state.project) && !fetching && !wished && shownFor === JSON.stringify(request()) + revisionOfAll();
}

/** The colour of a pixel as "#rrggbb", when there is a picture. */
export function colourAt(x, y) {
  if (!shownFor || x < 0 || y < 0 || x >= WIDTH || y >= HEIGHT) return null;
  const parts = [...context.getImageData(x, y, 1, 1).data.slice(0, 3)];
  return `#${parts.map((part) => part.toString(16).padStart(2, '0')).join('')}`;
}

// zoom

export let zoom = 1;
const steps = [0.25, 0.5, 0.75, 1, 2, 3, 4, 5, 6, 7, 8];

/** The largest zoom with which so much is seen: in little room any, else a whole step or one and a half. */
function fitting(width = WIDTH, height = HEIGHT) {
  const most = Math.min(viewport.clientWidth / width, viewport.clientHeight / height);
  if (most < 1) return Math.max(Math.floor(most * WIDTH) / WIDTH, steps[0]);
  return most >= 1.5 && most < 2 ? 1.5 : Math.min(Math.floor(most), steps.at(-1));
}

/** One of the steps, or 0 for as large as fits; the point (client coordinates) stays where it is. */
export function zoomTo(step, point = null) {
  prefer({ zoom: step });
  layOut(point);
}

export const zoomBy = (way, point = null) => zoomTo(way > 0 ? steps.find((step) => step > zoom) ?? steps.at(-1)
  : steps.findLast((step) => step < zoom) ?? steps[0], point);

export function zoomToSelection() {
  const [x, y, w, h] = around(selected().map((each) => each.rect).filter(Boolean));
  zoomTo(fitting(w, h));
  viewport.scrollTo(surface.offsetLeft + (x + w / 2) * zoom - viewport.clientWidth / 2,
    surface.offsetTop + (y + h / 2) * zoom - viewport.clientHeight / 2);
}

export function layOut(point = null) {
  const next = preferences.zoom || fitting();
  const before = surface.getBoundingClientRect();
  const held = point && { x: (point.x - before.left) / zoom, y: (point.y - before.top) / zoom };
  zoom = next;
  surface.style.width = `${WIDTH * zoom}px`;
  surface.style.height = `${HEIGHT * zoom}px`;
  surface.classList.toggle('between', !Number.isInteger(zoom));
  if (held) {
    const after = surface.getBoundingClientRect();
    viewport.scrollBy(after.left + held.x * zoom - point.x, after.top + held.y * zoom - point.y);
  }
  tell('zoom');
}

/** A pointer's place in pixels of the picture, not rounded. */
export function place(event) {
  const box = surface.getBoundingClientRect();
  return { x: (event.clientX - box.left) / zoom, y: (event.clientY - box.top) / zoom };
}

new ResizeObserver(() => layOut()).observe(viewport);
viewport.addEventListener('wheel', (event) => {
  if (!event.ctrlKey) return;
  event.preventDefault();
  zoomBy(event.deltaY < 0 ? 1 : -1, { x: event.clientX, y: event.clientY });
}, { passive: false });
on('document view project selection', () => refresh());
