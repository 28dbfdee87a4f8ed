// Small pictures of buffers and of pieces of them.
import { address } from './api.js';
import { el } from './dom.js';
import { on, state } from './state.js';

const MOST = 256; // pixels of the picture from which they are cut
export let version = 0; // of the pictures, which may change with the project
on('project', () => { version += 1; });

/** What a buffer is called in lists: its name and number, and its file. */
export const nameOfBuffer = ({ name, number, file }) => [name, number, file?.split('/').pop()]
  .filter((part) => part !== undefined).join(' · ');

/** A piece [x, y, width, height] of a buffer, or all of it, in so much room (rem); null for an empty buffer. */
export function thumbnail(number, room, piece = []) {
  const buffer = state.project.names.buffer.find((each) => each.number === number);
  if (!buffer) return null;
  const [x, y, w, h] = piece[2] > 0 && piece[3] > 0 ? piece : [0, 0, buffer.width, buffer.height];
  const scale = Math.min(room[0] / w, room[1] / h);
  const rem = (...pixels) => pixels.map((each) => `${each * scale}rem`).join(' ');
  const element = el('span', { class: 'thumbnail' });
  Object.assign(element.style, { width: rem(w), height: rem(h), backgroundSize: rem(buffer.width, buffer.height),
    backgroundImage: `url("${address('buffer.png', { number, most: MOST, version })}")`,
    backgroundPosition: rem(-x, -y) });
  return element;
}

/** The piece of a buffer's picture that a slot with these values shows. */
export const pieceOf = ({ src_x: x = 0, src_y: y = 0, box_width: right = 0, box_height: bottom = 0 }) =>
  [x, y, right - x, bottom - y];
