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
import { HEIGHT, hover, item, lead, placedItems, SCREEN, select, selected, state, tell, toggle, WIDTH }
  from './state.js';
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
  if (!gesture) return void hoverOver(event.target.dataset?.side ? state.hovered : keysAt(at.x, at.y)[0] ?? null);
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
  if (!gesture) hoverOver(null);
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

const hoverOver = (key) => { if (key !== state.hovered) hover(key); };

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

// dragging and resizing

/** Sends what a gesture has come to, one step at a time: `operations(parts)` makes changes of what has come since. */
function follower(label, merge, operations) {
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

/**
 * A gesture that changes records, as one step of undo. `starts` gives {document, follow, moveTo} when it begins to
 * move, behind what comes `first`. When it is cancelled, what it has changed is taken back, and the choice.
 */
function changing(starts, first) {
  const { selection, look } = state;
  const merge = `drag ${Date.now()} ${number += 1}`;
  const overlay = el('div');
  let course = null;
  let before = null;
  let latest = null;
  let isCancelled = false;
  async function finish() {
    await before;
    overlay.remove();
    await course?.follow.done();
  }
  return {
    async move(event, at) {
      const { shiftKey, ctrlKey } = event;
      latest = { shiftKey, ctrlKey, at, way: [at.x - gesture.from.x, at.y - gesture.from.y] };
      if (!course && first) {
        before ??= first(merge);
        await before; // even when it comes after the button is up
        if (isCancelled) return;
      }
      course ??= starts(overlay, merge);
      course.moveTo(latest);
    },
    async end() {
      await finish();
      if (!gesture) moveFrames(new Map());
    },
    async cancel() {
      isCancelled = true;
      await finish();
      moveFrames(new Map());
      if (before || course?.follow.changed) await travel('undo', course?.document);
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
        lay(el('div', {}, el('span', {}, gap.length)), gap.rect, zoom)));
    },
  };
}

/** With Alt the copies are what is moved. */
const dragging = (copying) => changing(moving, copying && ((merge) => copySelected({ by: [0, 0], merge })));

function moving(overlay, merge) {
  const items = movable();
  const rects = changedWith(items);
  const near = surroundings(overlay, rects);
  const whole = around(items.map((each) => each.rect));

  /** Pixels that everything moves by: whole units of what is moved, after snapping. */
  function distance(how) {
    const [across, down] = how.way.map(Math.abs);
    const way = how.shiftKey ? [across > down ? how.way[0] : 0, across > down ? 0 : how.way[1]] : how.way;
    return way.map((pixels, axis) => {
      const unit = Math.max(...items.map((each) => unitOf(each)[axis]));
      return unit > 1 ? Math.round(pixels / unit) * unit : near.snap(how, whole, axis, pixels);
    });
  }
  function placeText(dx, dy) {
    const each = lead();
    if (!each?.rect) return '';
    const [x, y] = rects.get(each.key) ?? each.rect;
    if (each.shown?.placed !== 'cells') return `x ${x + dx}  y ${y + dy}`;
    const [w, h] = each.shown.cell;
    return `column ${Math.round((x + dx) / w)}  row ${Math.round((y + dy) / h)}`;
  }

  return {
    document: items[0]?.document.name,
    follow: follower(`Move ${nameOf(items)}`, merge, ([dx, dy]) => moveOperations(items.map((each) =>
      ({ item: each, dx: dx / unitOf(each)[0], dy: dy / unitOf(each)[1] })))),
    moveTo(how) {
      if (!items.length) return;
      const [dx, dy] = distance(how);
      const there = ([x, y, w, h]) => [x + dx, y + dy, w, h];
      moveFrames(new Map([...rects].map(([key, rect]) => [key, there(rect)])));
      near.show(how.at, there(whole), `dx ${signed(dx)}  dy ${signed(dy)}\n${placeText(dx, dy)}`);
      this.follow.want([dx, dy, 0, 0]);
    },
  };
}

const edges = [['w', 0, true], ['n', 1, true], ['e', 0, false], ['s', 1, false]];

const resizing = (side) => changing((overlay, merge) => {
  const each = movedBy(lead());
  const start = each.rect;
  const isText = isSlotOf(each, 'text'); // boxes are in pixels
  const steps = edges.map(([, axis, low]) => (low || !isText ? unitOf(each)[axis] : 1));
  const near = surroundings(overlay, changedWith([each]));
  return {
    document: each.document.name,
    follow: follower(`Resize ${nameOf([each])}`, merge, ([left, top, right, bottom]) =>
      [[each.document.name, resizeOperations(item(each.key), { left, top, right, bottom })]]),
    moveTo(how) {
      const counts = edges.map(([letter, axis, low], i) => {
        if (!side.includes(letter)) return 0;
        const edge = start[axis] + (low ? 0 : start[axis + 2]);
        const pixels = steps[i] > 1 ? how.way[axis] : near.snap(how, [edge, edge, 0, 0], axis, how.way[axis]);
        const limit = start[axis + 2] - 1; // at least one pixel stays
        return Math.round((low ? Math.min(pixels, limit) : Math.max(pixels, -limit)) / steps[i]);
      });
      const [left, top, right, bottom] = counts.map((count, i) => count * steps[i]);
      const rect = [start[0] + left, start[1] + top, start[2] + right - left, start[3] + bottom - top];
      moveFrames(new Map(state.selection.map((key) => [key, rect])));
      near.show(how.at, rect, `${rect[2]} × ${rect[3]}\nx ${rect[0]}  y ${rect[1]}`);
      this.follow.want(counts);
    },
  };
});

const signed = (value) => (value < 0 ? `−${-value}` : `+${value}`);

surface.addEventListener('dblclick', () => {
  if (selected().length) find('properties').querySelector('[data-first]')?.focus();
});

