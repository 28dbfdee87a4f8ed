// The line under everything: pointer, selection or an explanation.
import { banner } from './dialogs.js';
import { el, find } from './dom.js';
import { cellOfGrid } from './rulers.js';
import { colourAt } from './picture.js';
import { on, screenDocument, selected } from './state.js';
import { swatchOf } from './colours.js';

const pointer = el('span');
const chosen = el('span', { class: 'grow', id: 'field-help' });
find('status').prepend(pointer, chosen);

function show(...parts) {
  chosen.replaceChildren(...parts);
  chosen.title = chosen.textContent;
}
/** Says something of a field, in all of the line, until something else is chosen or the pointer moves. */
export function explain(...parts) {
  pointer.replaceChildren();
  show(...parts);
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
  if (!each) show('');
  else if (items.length > 1) show(`${items.length} chosen`);
  else if (each.rect) {
    const [x, y, w, h] = each.rect;
    const placed = each.shown ? `, placed by ${each.shown.placed}` : '';
    show(`${each.kind} ${each.index}: ${w} × ${h} at ${x}, ${y}${placed}`);
  } else show(`${each.kind} ${each.name}`);
});
