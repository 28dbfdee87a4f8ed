// Rectangles [x, y, width, height] in pixels of the picture.

export function inside([x, y, w, h], px, py) {
  return px >= x && py >= y && px < x + Math.max(w, 1) && py < y + Math.max(h, 1);
}
export function meets(a, b) {
  return a[0] < b[0] + b[2] && b[0] < a[0] + a[2] && a[1] < b[1] + b[3] && b[1] < a[1] + a[3];
}

export function between(x0, y0, x1, y1) {
  return [Math.min(x0, x1), Math.min(y0, y1), Math.abs(x1 - x0), Math.abs(y1 - y0)];
}

export function around(rects) {
  const [left, top] = [0, 1].map((axis) => Math.min(...rects.map((rect) => rect[axis])));
  const [right, bottom] = [0, 1].map((axis) => Math.max(...rects.map((rect) => rect[axis] + rect[axis + 2])));
  return [left, top, right - left, bottom - top];
}

/** Where arrow keys lead. */
export const ways = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

export const clamp = (value, low, high) => Math.min(Math.max(value, low), high);

/** Lines that a rectangle's edges and middles offer or look for, in one direction (0 across, 1 down). */
const lines = (rect, axis) => [rect[axis], rect[axis] + rect[axis + 2], rect[axis] + rect[axis + 2] / 2];

/** The gaps from a rectangle to what is next to it, or to the edge of the last of `others`: [{rect, length}]. */
export function gaps(rect, others) {
  return [0, 1].flatMap((axis) => {
    const across = 1 - axis;
    const middle = rect[across] + rect[across + 2] / 2;
    const [low, high] = [rect[axis], rect[axis] + rect[axis + 2]];
    const beside = others.slice(0, -1).filter((each) => each[across] < rect[across] + rect[across + 2] &&
      rect[across] < each[across] + each[across + 2]);
    const [start, end] = [others.at(-1)[axis], others.at(-1)[axis] + others.at(-1)[axis + 2]];
    const from = Math.max(start, ...beside.map((each) => each[axis] + each[axis + 2]).filter((at) => at <= low));
    const to = Math.min(end, ...beside.map((each) => each[axis]).filter((at) => at >= high));
    return [[from, low - from], [high, to - high]].filter(([, length]) => length > 0).map(([at, length]) =>
      ({ length, rect: axis ? [middle, at, 0, length] : [at, middle, length, 0] }));
  });
}

/** The shortest way, at most `reach`, that brings a line of `rect` onto a line of the others: {by, at} or null. */
export function snapped(rect, others, axis, reach) {
  const places = others.flatMap((other) => lines(other, axis));
  const found = lines(rect, axis).flatMap((mine) => places.filter((at) => Math.abs(at - mine) <= reach)
    .map((at) => ({ by: Math.round(at - mine), at })));
  return found.sort((a, b) => Math.abs(a.by) - Math.abs(b.by))[0] ?? null;
}
