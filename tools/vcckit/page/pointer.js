// Gestures on the picture: choose, rubber band, drag, resize, pan. A gesture shows its frames at once; the changes
// follow it to the server one at a time.
import { isSlotOf, movable, movedBy, moveOperations, resizeOperations, unitOf } from './arrange.js';
import { el, find, lay } from './dom.js';
import { editTogether, gestureEnds, travel } from './edits.js';
import { isBackground, isSeen, keysAt, moveFrames } from './frames.js';
import { around, between, gaps, meets, snapped } from './geometry.js';
import { place, zoom } from './picture.js';
import { preferences } from './preferences.js';
import { copySelected } from './records.js';
import { cellOfGrid, showPointer } from './rulers.js';
import { HEIGHT, item, lead, placedItems, SCREEN, select, selected, state, tell, toggle, WIDTH } from './state.js';
import { nameOf } from './values.js';

const surface = find('surface');
const viewport = find('viewport');
const THRESHOLD = 3; // pixels of the window before a press becomes a drag
const REACH = 4; // pixels of the picture from which lines attract

let gesture = null;
let number = 0;
let spaceDown = false;

surface.addEventListener('pointerdown', (event) => {
  viewport.focus({ preventScroll: true });
  if (event.button === 1 || (event.button === 0 && spaceDown)) {
    begin(event, { move: pan, end() {} });
  } else if (event.button === 0) {
    const side = event.target.dataset?.side;
    begin(event, side ? resizing(side) : pressing(event));
  }
});

function begin(event, parts) {
  event.preventDefault();
  surface.setPointerCapture(event.pointerId);
  gesture = { ...parts, x: event.clientX, y: event.clientY, scroll: [viewport.scrollLeft, viewport.scrollTop],
    from: place(event), moving: false };
}

surface.addEventListener('pointermove', (event) => {
  const at = place(event);
  showPointer(at);
  tell('pointer', at);
  if (!gesture) {
    hover(event, at);
    return;
  }
  if (!gesture.moving && Math.hypot(event.clientX - gesture.x, event.clientY - gesture.y) < THRESHOLD) return;
  gesture.moving = true;
  gesture.move(event, at);
});
surface.addEventListener('pointerup', (event) => {
  const ended = letGo();
  if (ended) gestureEnds((ended.moving ? ended.end : ended.click ?? ended.end)?.call(ended, event));
});
surface.addEventListener('pointercancel', cancelGesture);
surface.addEventListener('pointerleave', () => {
  showPointer(null);
  tell('pointer', null);
  if (!gesture) setHovered(null);
});
surface.addEventListener('auxclick', (event) => event.preventDefault());

function letGo() {
  const ended = gesture;
  gesture = null;
  surface.classList.remove('pan');
  return ended;
}

/** Escape: what a drag has changed is taken back. Tells whether there was a gesture. */
export function cancelGesture() {
  const ended = letGo();
  gestureEnds(ended?.cancel?.());
  return Boolean(ended);
}

function hover(event, at) {
  setHovered(event.target.dataset?.side ? state.hovered : keysAt(at.x, at.y)[0] ?? null);
}
function setHovered(key) {
  if (state.hovered === key) return;
  state.hovered = key;
  tell('hovered');
}

function pan(event) {
  surface.classList.add('pan');
  viewport.scrollLeft = gesture.scroll[0] - (event.clientX - gesture.x);
  viewport.scrollTop = gesture.scroll[1] - (event.clientY - gesture.y);
}
addEventListener('keydown', (event) => {
  if (event.key === ' ' && event.target === viewport) {
    spaceDown = true;
    event.preventDefault();
  }
});
addEventListener('keyup', (event) => { if (event.key === ' ') spaceDown = false; });

// choosing

function pressing(event) {
  const at = place(event);
  const keys = keysAt(at.x, at.y);
  const chosen = keys.find((key) => state.selection.includes(key) && !isBackground(item(key).rect));
  if (event.shiftKey) return { click() { if (keys.length) toggle(keys[0]); }, ...rubberBand(at, true) };
  if (chosen) return { click: () => select(event.ctrlKey ? below(keys) : keys[0]), ...dragging(event.altKey) };
  const top = keys[0];
  if (!top || isBackground(item(top).rect)) return { click: () => select(top ?? []), ...rubberBand(at, false) };
  select(top);
  return { click() {}, ...dragging(event.altKey) };
}

/** The next one under the leading one, at last the highest again. */
function below(keys) {
  return keys[(keys.indexOf(state.selection.at(-1)) + 1) % keys.length];
}

function rubberBand(from, adding) {
  const before = adding ? [...state.selection] : [];
  const band = el('div', { class: 'band' });
  return {
    move(event, at) {
      const rect = between(from.x, from.y, at.x, at.y);
      lay(band, rect, zoom);
      if (!band.isConnected) find('frames').append(band);
      const met = placedItems().filter((each) => isSeen(each) && !isBackground(each.rect) && meets(each.rect, rect));
      select([...new Set([...before, ...met.map((each) => each.key)])]);
    },
    end() { band.remove(); },
    cancel() { band.remove(); select(before); },
  };
}

// dragging

/** Everything of a gesture is one step of undo. */
const nextMerge = () => `drag ${Date.now()} ${number += 1}`;

/** Sends what a gesture has come to, one step at a time: `operations(from, to)` by document. */
function follower(label, operations, merge = nextMerge()) {
  let sent = [0, 0, 0, 0];
  let wanted = sent;
  let running = null;
  async function run() {
    while (wanted.some((part, i) => part !== sent[i])) {
      const next = wanted;
      const changes = operations(next.map((part, i) => part - sent[i]));
      sent = next;
      await editTogether(changes, label, merge);
    }
    running = null;
  }
  return {
    want(next) { wanted = next; running ??= run(); },
    get changed() { return sent.some(Boolean); },
    async done() { await running; },
  };
}

/** How a drag ends: {follow, before, document}; cancelled, what it has changed is taken back, also the choice. */
function ending(overlay, course) {
  const { selection, look } = state;
  async function finish() {
    await course.before;
    overlay.remove();
    await course.follow?.done();
  }
  return {
    async end() {
      await finish();
      if (!gesture) moveFrames(new Map());
    },
    async cancel() {
      course.cancelled = true;
      await finish();
      moveFrames(new Map());
      if (course.before || course.follow?.changed) await travel('undo', course.document);
      select(selection, { look });
    },
  };
}

/** Keys and places of all that changes with these: further records of a group, slots that show a window. */
function changedWith(items) {
  const groups = new Set(items.map((each) => each.record.repeat?.first).filter((first) => first !== undefined));
  const keys = new Set(items.map((each) => each.key));
  return new Map(placedItems().filter((each) => state.selection.includes(each.key) ||
    groups.has(each.record.repeat?.first) || keys.has(movedBy(each).key)).map((each) => [each.key, each.rect]));
}

/** What stays attracts what is dragged, and is measured to. `overlay` shows both, and the ghost. */
function surroundings(overlay, changed) {
  const ghost = el('div', { class: 'ghost' });
  const guides = [el('div', { class: 'guide' }), el('div', { class: 'guide' })];
  const measures = el('div', { class: 'measures' });
  const others = placedItems().filter((each) => !changed.has(each.key) && isSeen(each) && !isBackground(each.rect))
    .map((each) => each.rect).concat([SCREEN]);
  overlay.replaceChildren(...guides, measures, ghost);
  find('frames').append(overlay);

  return {
    /** Pixels that a rectangle moves by in one direction, for so many of the pointer. */
    snap(event, rect, axis, pixels) {
      const free = Math.round(pixels);
      guides[axis].hidden = true;
      if (!preferences.snap || event.ctrlKey || (event.shiftKey && !pixels)) return free;
      if (preferences.grid) {
        const cell = cellOfGrid()[axis];
        return Math.round((rect[axis] + free) / cell) * cell - rect[axis];
      }
      const there = [...rect];
      there[axis] += free;
      const found = snapped(there, others, axis, REACH / Math.max(zoom / 2, 1));
      if (!found) return free;
      guides[axis].hidden = false;
      lay(guides[axis], axis ? [0, found.at, WIDTH, 1 / zoom] : [found.at, 0, 1 / zoom, HEIGHT], zoom);
      return free + found.by;
    },
    show(at, rect, text) {
      ghost.textContent = text;
      const isRight = at.x > WIDTH - 130 / zoom * 1.4;
      Object.assign(ghost.style, { left: `${at.x * zoom + (isRight ? -150 : 16)}px`,
        top: `${Math.min(at.y * zoom + 16, HEIGHT * zoom - 44)}px` });
      measures.replaceChildren(...gaps(rect, others).map((gap) =>
        lay(el('div', {}, el('span', {}, String(gap.length))), gap.rect, zoom)));
    },
  };
}

function dragging(copying) {
  let items = null;
  let latest = null;
  let rects = null;
  let near = null;
  const course = {};
  const merge = nextMerge();
  const overlay = el('div');

  function start() {
    items = movable();
    rects = changedWith(items);
    near = surroundings(overlay, rects);
    course.document = items[0]?.document.name;
    course.follow = follower(`Move ${nameOf(items)}`, ([dx, dy]) => moveOperations(items.map((each) =>
      ({ item: each, dx: dx / unitOf(each)[0], dy: dy / unitOf(each)[1] }))), merge);
  }

  /** Pixels that everything moves by: whole units of what is moved, after snapping. */
  function distance(event, at) {
    let way = [at.x - event.from.x, at.y - event.from.y];
    if (event.shiftKey) way = Math.abs(way[0]) > Math.abs(way[1]) ? [way[0], 0] : [0, way[1]];
    const whole = around(items.map((each) => each.rect));
    return way.map((pixels, axis) => {
      const unit = Math.max(...items.map((each) => unitOf(each)[axis]));
      return unit > 1 ? Math.round(pixels / unit) * unit : near.snap(event, whole, axis, pixels);
    });
  }

  return {
    async move(event, at) {
      latest = { shiftKey: event.shiftKey, ctrlKey: event.ctrlKey, at, from: gesture.from };
      if (!items && copying) { // the copies are what is moved, even when they come after the button is up
        course.before ??= copySelected({ by: [0, 0], merge });
        await course.before;
        if (course.cancelled) return;
      }
      if (!items) start();
      if (items.length) moveTo(latest);
    },
    ...ending(overlay, course),
  };

  function moveTo(how) {
    const { at } = how;
    const [dx, dy] = distance(how, at);
    moveFrames(new Map([...rects].map(([key, [x, y, w, h]]) => [key, [x + dx, y + dy, w, h]])));
    const [x, y, w, h] = around(items.map((each) => each.rect));
    near.show(at, [x + dx, y + dy, w, h], `dx ${signed(dx)}  dy ${signed(dy)}\n${placeText(dx, dy)}`);
    course.follow.want([dx, dy, 0, 0]);
  }

  function placeText(dx, dy) {
    const each = lead();
    if (!each?.rect) return '';
    const [x, y] = rects.get(each.key) ?? each.rect;
    const cells = each.shown?.placed === 'cells'
      ? `column ${Math.round((x + dx) / each.shown.cell[0])}  row ${Math.round((y + dy) / each.shown.cell[1])}` : '';
    return cells || `x ${x + dx}  y ${y + dy}`;
  }
}

// resizing

const edges = [['w', 0, true], ['n', 1, true], ['e', 0, false], ['s', 1, false]];

function resizing(side) {
  const each = movedBy(lead());
  const start = each.rect;
  const isText = isSlotOf(each, 'text'); // boxes are in pixels
  const steps = edges.map(([, axis, low]) => (low || !isText ? unitOf(each)[axis] : 1));
  const overlay = el('div');
  let near = null;
  const follow = follower(`Resize ${nameOf([each])}`, ([left, top, right, bottom]) =>
    [[each.document.name, resizeOperations(item(each.key), { left, top, right, bottom })]]);
  return {
    move(event, at) {
      const way = [at.x - gesture.from.x, at.y - gesture.from.y];
      near ??= surroundings(overlay, changedWith([each]));
      const counts = edges.map(([letter, axis, low], i) => {
        if (!side.includes(letter)) return 0;
        const edge = start[axis] + (low ? 0 : start[axis + 2]);
        const pixels = steps[i] > 1 ? way[axis] : near.snap(event, [edge, edge, 0, 0], axis, way[axis]);
        const limit = start[axis + 2] - 1; // at least one pixel stays
        return Math.round((low ? Math.min(pixels, limit) : Math.max(pixels, -limit)) / steps[i]);
      });
      const [left, top, right, bottom] = counts.map((count, i) => count * steps[i]);
      const rect = [start[0] + left, start[1] + top, start[2] + right - left, start[3] + bottom - top];
      moveFrames(new Map(state.selection.map((key) => [key, rect])));
      near.show(at, rect, `${rect[2]} × ${rect[3]}\nx ${rect[0]}  y ${rect[1]}`);
      follow.want(counts);
    },
    ...ending(overlay, { follow, document: each.document.name }),
  };
}

const signed = (value) => (value < 0 ? `−${-value}` : `+${value}`);

surface.addEventListener('dblclick', () => {
  if (selected().length) find('properties').querySelector('[data-first]')?.focus();
});

