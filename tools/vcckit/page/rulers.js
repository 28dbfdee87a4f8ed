// Rulers in pixels along the picture's edges, the grid of cells, and the pointer's place on both.
import { find, planned } from './dom.js';
import { zoom } from './picture.js';
import { preferences } from './preferences.js';
import { cellOfFont, HEIGHT, on, selected, WIDTH } from './state.js';

const viewport = find('viewport');
const surface = find('surface');
let pointer = null;

export function showPointer(at) {
  pointer = at;
  draw();
}

/** The grid's cells are those of the font that is chosen for it. */
export const cellOfGrid = () => cellOfFont(preferences.gridFont);

function drawGrid() {
  const grid = find('grid');
  grid.hidden = !preferences.grid;
  const [width, height] = cellOfGrid();
  grid.style.backgroundSize = `${width * zoom}px ${height * zoom}px`;
}

function drawRuler(canvas, length, axis) {
  const box = canvas.getBoundingClientRect();
  const scale = devicePixelRatio;
  const [width, height] = [Math.round(box.width * scale), Math.round(box.height * scale)];
  if (canvas.width !== width || canvas.height !== height) Object.assign(canvas, { width, height });
  const context = canvas.getContext('2d');
  const colour = (name) => { // as a canvas takes it, by day or by night
    canvas.style.color = `var(${name})`;
    return getComputedStyle(canvas).color;
  };
  context.setTransform(scale, 0, 0, scale, 0, 0);
  context.clearRect(0, 0, box.width, box.height);
  const thick = axis ? box.width : box.height;
  const start = surface.getBoundingClientRect()[axis ? 'top' : 'left'] - box[axis ? 'top' : 'left'];
  if (axis) { // down is across, turned
    context.translate(box.width, 0);
    context.rotate(Math.PI / 2);
  }
  context.fillStyle = colour('--accent-soft');
  for (const { rect } of selected())
    if (rect) context.fillRect(start + rect[axis] * zoom, 0, Math.max(rect[axis + 2] * zoom, 1), thick);
  context.strokeStyle = colour('--line-strong');
  context.fillStyle = colour('--ink-dim');
  context.font = `${thick * 0.56}px sans-serif`;
  context.beginPath();
  const step = zoom > 2 ? 5 : 10;
  for (let at = 0; at <= length; at += step) {
    const x = Math.round(start + at * zoom) + 0.5;
    const tall = at % 100 === 0 ? thick : at % 50 === 0 ? thick * 0.5 : thick * 0.25;
    context.moveTo(x, thick);
    context.lineTo(x, thick - tall);
    if (at % (zoom > 2 ? 50 : 100) === 0) context.fillText(String(at), x + 3, thick * 0.62);
  }
  context.stroke();
  if (pointer) {
    context.fillStyle = colour('--accent');
    context.fillRect(Math.round(start + Math.floor(pointer[axis ? 'y' : 'x']) * zoom), 0, Math.max(zoom, 1), thick);
  }
}

const draw = planned(() => {
  drawRuler(find('ruler-top'), WIDTH, 0);
  drawRuler(find('ruler-left'), HEIGHT, 1);
  drawGrid();
});

viewport.addEventListener('scroll', draw);
on('zoom preferences selection document view project', draw);
