// The piece of a picture that a slot shows, chosen on the picture of its buffer.
import { address } from './api.js';
import { dialog } from './dialogs.js';
import { el, lay, segments } from './dom.js';
import { between, clamp, ways } from './geometry.js';
import { screenDocument, shownOf, state } from './state.js';
import { nameOfBuffer, pieceOf, thumbnail } from './thumbnails.js';
import { isSpoken, namesFor, setValues, valuesOf, writtenFor } from './values.js';

const GRIP = 7; // pixels of the window around an edge that take hold of it

export function chooseBuffer(items) {
  const [each] = items;
  const before = valuesOf(each, state.language);
  let number = before.buffer ?? 0;
  let rect = pieceOf(before);
  let size = [1, 1];
  let scale = 1;

  const image = el('img', { alt: 'Picture of the buffer', draggable: false, on: { load() {
    size = [image.naturalWidth, image.naturalHeight];
    show();
  } } });
  const mark = el('div', { class: 'piece' });
  const others = el('div');
  const area = el('div', { class: 'buffer-area', tabIndex: 0,
    'aria-label': 'Arrow keys move the piece, Shift resizes it' }, image, others, mark);
  const numbers = el('output', { class: 'mono' });
  const buffers = namesFor('buffer', each.document).filter((one) => one.width !== 0);
  const pictures = segments('Picture', buffers.map((one) => ({ value: one.number, title: one.file,
    label: el('span', {}, thumbnail(one.number, [9, 4.5]), nameOfBuffer(one)) })), load);
  const magnify = el('select', { 'aria-label': 'Magnification', on: { change: show } },
    [0, 1, 2, 3, 4].map((value) => el('option', { value }, value ? `${value} ×` : 'fits')));

  function load(next) {
    number = next;
    pictures.show(number);
    image.src = address('buffer.png', { number });
  }
  function show() {
    const room = area.parentElement.getBoundingClientRect();
    const whole = Math.min((room.width - 4) / size[0], (room.height - 4) / size[1]);
    scale = Number(magnify.value) || (whole >= 1 ? Math.floor(whole) : whole);
    Object.assign(area.style, { width: `${size[0] * scale}px`, height: `${size[1] * scale}px` });
    lay(mark, rect, scale);
    others.replaceChildren(...otherPieces().map((piece) => lay(el('div', { class: 'piece other' }), piece, scale)));
    numbers.textContent = `${rect[2]} × ${rect[3]} from ${rect[0]}, ${rect[1]}   of ${size[0]} × ${size[1]}`;
  }
  function otherPieces() {
    const seen = new Set([rect.join()]);
    return screenDocument().slots.map(shownOf)
      .filter(({ kind, values }) => kind === 'picture' && values.buffer === number).map(({ values }) => pieceOf(values))
      .filter((piece) => !seen.has(piece.join()) && seen.add(piece.join()));
  }

  let hold = null;
  const at = (event) => {
    const box = area.getBoundingClientRect();
    return [clamp(Math.round((event.clientX - box.left) / scale), 0, size[0]),
      clamp(Math.round((event.clientY - box.top) / scale), 0, size[1])];
  };
  const edgesOf = ([x, y, w, h]) => [x, y, x + w, y + h];
  /** Which of the edges (left, top, right, bottom) are taken hold of; null outside of the piece. */
  function sides(from) {
    const near = GRIP / scale;
    const edges = edgesOf(rect);
    return [0, 1].every((axis) => from[axis] > edges[axis] - near && from[axis] < edges[axis + 2] + near)
      ? edges.map((edge, i) => Math.abs(from[i % 2] - edge) < near) : null;
  }
  area.addEventListener('pointerdown', (event) => {
    event.preventDefault();
    area.focus();
    area.setPointerCapture(event.pointerId);
    const from = at(event);
    hold = { from, sides: sides(from), rect: [...rect] };
  });
  area.addEventListener('pointermove', (event) => {
    if (!hold) return;
    const [x, y] = at(event);
    const [dx, dy] = [x - hold.from[0], y - hold.from[1]];
    if (!hold.sides) rect = between(...hold.from, x, y);
    else if (!hold.sides.some(Boolean)) rect = moved(hold.rect, dx, dy);
    else rect = between(...edgesOf(hold.rect).map((edge, i) => (hold.sides[i] ? edge + [dx, dy][i % 2] : edge)));
    show();
  });
  area.addEventListener('pointerup', () => { hold = null; });
  area.addEventListener('keydown', (event) => {
    const way = ways[event.key];
    if (!way) return;
    event.preventDefault();
    if (event.shiftKey) rect = [rect[0], rect[1], clamp(rect[2] + way[0], 1, size[0] - rect[0]),
      clamp(rect[3] + way[1], 1, size[1] - rect[1])];
    else rect = moved(rect, ...way);
    show();
  });
  function moved([x, y, w, h], dx, dy) {
    return [clamp(x + dx, 0, Math.max(size[0] - w, 0)), clamp(y + dy, 0, Math.max(size[1] - h, 0)), w, h];
  }

  dialog('Piece of a picture', el('div', { class: 'buffer-dialog' },
    el('div', { class: 'buffer-bar' }, magnify, numbers,
      el('span', { class: 'dim grow' }, 'Drag a new piece, or the old one by its edges. Thin frames: other slots.')),
    el('div', { class: 'buffer-choice' }, pictures, el('div', { class: 'buffer-room' }, area))),
  [{ label: 'Cancel' }, { label: 'Take this piece', primary: true, run: take }], { wide: true });
  load(number);

  function take() {
    const [src_x, src_y, box_width, box_height] = edgesOf(rect);
    const piece = { src_x, src_y, box_width, box_height };
    const language = Object.keys(piece).some((field) => isSpoken(items, field)) ? state.language : '';
    const changed = Object.fromEntries(Object.entries(piece).filter(([field, next]) => next !== (before[field] ?? 0)));
    if (number !== (before.buffer ?? 0)) changed.buffer = writtenFor('buffer', number, each.document);
    if (Object.keys(changed).length) setValues(items, changed, language);
  }
}
