// The line under everything: pointer, selection or an explanation, times of the last picture.
import { el, find } from './dom.js';
import { cellOfGrid } from './rulers.js';
import { colourAt } from './picture.js';
import { banner } from './messages.js';
import { on, screenDocument, selected, state } from './state.js';
import { swatchOf } from './colours.js';

const pointer = el('span');
const chosen = el('span', { class: 'grow', id: 'field-help' });
const time = el('span');
find('status').append(pointer, chosen, time);

/** Says something of a field, until something else is chosen. */
export function explain(...parts) {
  chosen.replaceChildren(...parts);
  chosen.title = chosen.textContent;
}

on('pointer', (at) => {
  if (!at) {
    pointer.textContent = 'x – y –';
    return;
  }
  const [x, y] = [Math.floor(at.x), Math.floor(at.y)];
  const [w, h] = cellOfGrid();
  const colour = colourAt(x, y);
  pointer.replaceChildren(`x ${x}  y ${y}   cell ${Math.floor(x / w)}, ${Math.floor(y / h)}   `,
    ...(colour ? [swatchOf(colour), colour] : []));
});
on('document view project', () => banner('stale', screenDocument()?.stale
  ? 'The source has a fault that forbids packing it: the picture is the last one without.' : ''));
on('selection document view', () => {
  const items = selected();
  const [each] = items;
  if (!each) explain('');
  else if (items.length > 1) explain(`${items.length} chosen`);
  else if (each.rect) {
    const [x, y, w, h] = each.rect;
    const placed = each.shown ? `, placed by ${each.shown.placed}` : '';
    explain(`${each.kind} ${each.index}: ${w} × ${h} at ${x}, ${y}${placed}`);
  } else explain(`${each.kind} ${each.name}`);
});
on('picture', ({ rendering, whole, fault }) => {
  time.textContent = fault ?? `drawn in ${rendering.toFixed(1)} ms, here after ${whole.toFixed(0)} ms`;
  time.classList.toggle('bad', Boolean(fault));
  if (state.project) time.title = `vcckit ${state.project.version}`;
});
