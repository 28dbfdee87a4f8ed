// The screen as the program draws it: asked for after every change, one request at a time, the newest wish wins.
import { get } from './api.js';
import { find } from './dom.js';
import { clamp } from './geometry.js';
import { preferences, prefer } from './preferences.js';
import { HEIGHT, lead, on, screenDocument, state, tell, viewOf, WIDTH } from './state.js';

const canvas = find('picture');
const context = canvas.getContext('2d', { alpha: false });
const viewport = find('viewport');
const surface = find('surface');

let wished = null;
let fetching = false;
let shownFor = '';
let pixels = null;

/** What a picture of the view is asked for with; the renderer's own words. */
export function request(change = {}) {
  const { picture, rows: options } = viewOf(state.view);
  const index = lead()?.kind === 'slot' ? lead().index : null;
  const about = state.view === 'help' ? state.about : null;
  return { view: picture ?? state.view, language: state.language, row: options ? state.row : null,
    module: options ? state.module : null, hover: about ?? (state.preview === 'hover' ? index : null),
    pressed: state.preview === 'pressed' ? index : null, ...change };
}

/** Every document that a view is drawn from decides on its picture. */
function revisionOfAll() {
  return [...state.documents.values()].map((each) => each.revision).join('.');
}

export function refresh({ always = false } = {}) {
  if (!state.project || !viewOf(state.view)) return;
  const wish = request();
  const key = JSON.stringify(wish) + revisionOfAll() + (always ? performance.now() : '');
  if (key === shownFor || key === wished?.key) return;
  wished = { key, wish };
  if (!fetching) work();
}

async function work() {
  fetching = true;
  while (wished) {
    const { key, wish } = wished;
    wished = null;
    const began = performance.now();
    try {
      const image = await rgba(wish);
      context.putImageData(image.data, 0, 0);
      pixels = image.data.data;
      shownFor = key;
      canvas.dataset.revision = image.revision;
      tell('picture', { rendering: image.rendering, whole: performance.now() - began });
    } catch (error) {
      tell('picture', { fault: error.message });
    }
  }
  fetching = false;
}

/** The pixels of a view, with what the renderer needed for them. */
export async function rgba(wish) {
  const response = await get('picture', { ...wish, revision: screenDocument()?.revision });
  const bytes = new Uint8ClampedArray(await response.arrayBuffer());
  return { data: new ImageData(bytes, WIDTH, HEIGHT), revision: response.headers.get('X-Revision') ?? '',
    rendering: Number(response.headers.get('X-Render-Milliseconds')) };
}

/** Whether what is shown is drawn from the newest of everything. */
export function isCurrent() {
  return Boolean(state.project) && !fetching && !wished &&
    shownFor.startsWith(JSON.stringify(request()) + revisionOfAll());
}

/** The colour of a pixel as "#rrggbb", when there is a picture. */
export function colourAt(x, y) {
  if (!pixels || x < 0 || y < 0 || x >= WIDTH || y >= HEIGHT) return null;
  const at = (Math.floor(y) * WIDTH + Math.floor(x)) * 4;
  return `#${[...pixels.slice(at, at + 3)].map((part) => part.toString(16).padStart(2, '0')).join('')}`;
}

// zoom

export let zoom = 1;

/** The largest whole step with which everything is seen. */
function fitting() {
  return clamp(Math.floor(Math.min(viewport.clientWidth / WIDTH, viewport.clientHeight / HEIGHT)), 1, 4);
}

/** A whole step 1 to 4, or 0 for as large as fits; the point (client coordinates) stays where it is. */
export function zoomTo(step, point = null) {
  prefer({ zoom: step === 0 ? 0 : clamp(step, 1, 4) });
  layOut(point);
}

export function layOut(point = null) {
  const next = preferences.zoom || fitting();
  const before = surface.getBoundingClientRect();
  const held = point && { x: (point.x - before.left) / zoom, y: (point.y - before.top) / zoom };
  zoom = next;
  surface.style.width = `${WIDTH * zoom}px`;
  surface.style.height = `${HEIGHT * zoom}px`;
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
  zoomTo(clamp(zoom + (event.deltaY < 0 ? 1 : -1), 1, 4), { x: event.clientX, y: event.clientY });
}, { passive: false });
on('document view project', () => refresh());
on('selection', () => { if (state.preview !== 'rest') refresh(); });
