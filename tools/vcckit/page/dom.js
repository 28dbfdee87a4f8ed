// Elements without markup in strings: what a file says can never become part of the page.

const attributes = new Set(['role', 'for', 'list']);

/** An element. `properties` sets properties; names with a dash are attributes, `on` maps events to functions. */
export function el(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (value === undefined || value === null) continue;
    if (name === 'on') for (const [event, run] of Object.entries(value)) element.addEventListener(event, run);
    else if (name === 'class') element.className = value;
    else if (attributes.has(name) || name.includes('-')) element.setAttribute(name, value);
    else element[name] = value;
  }
  element.append(...children.flat(Infinity).filter((child) => ![null, undefined, false].includes(child)));
  return element;
}

/** Elements by name that are made anew only when they would say something else. */
export function keeper() {
  const kept = new Map();
  return (name, says, make) => {
    const text = JSON.stringify(says);
    if (kept.get(name)?.text !== text) kept.set(name, { text, element: make() });
    return kept.get(name).element;
  };
}

/** Gives an element these children. Those that it has stay where they are, with the focus and a press on them. */
export function put(parent, children) {
  const wanted = new Set(children);
  for (const each of [...parent.childNodes]) if (!wanted.has(each)) each.remove();
  children.forEach((child, i) => {
    if (parent.childNodes[i] !== child) parent.insertBefore(child, parent.childNodes[i] ?? null);
  });
  return parent;
}

export const find = (id) => document.getElementById(id);

/** Lays an element over a rectangle of a picture that is shown at this scale. */
export function lay(element, rect, scale) {
  const [left, top, width, height] = rect.map((part) => `${part * scale}px`);
  Object.assign(element.style, { left, top, width, height });
  return element;
}

/** Runs `draw` once with the window's next picture, however often it is asked for until then. */
export function planned(draw) {
  let next = 0;
  return () => { next ||= requestAnimationFrame(() => { next = 0; draw(); }); };
}

const SVG = 'http://www.w3.org/2000/svg';

// Strokes on a field of 16 x 16.
const strokes = {
  undo: 'M6 3 2.5 6.5 6 10M3 6.5h6.5a4 4 0 0 1 0 8H7',
  redo: 'M10 3l3.5 3.5L10 10M13 6.5H6.5a4 4 0 0 0 0 8H9',
  play: 'M4.5 2.5v11l9-5.5z',
  day: 'M8 5a3 3 0 1 0 0 6 3 3 0 0 0 0-6zM8 1v1.5M8 13.5V15M1 8h1.5M13.5 8H15M3 3l1 1M12 12l1 1M3 13l1-1M12 4l1-1',
  keys: 'M1.5 4h13v8h-13zM4 6.5h.5M7 6.5h.5M10 6.5h.5M5 9.5h6',
  plus: 'M8 3v10M3 8h10',
  minus: 'M3 8h10',
  fit: 'M2 6V2h4M10 2h4v4M14 10v4h-4M6 14H2v-4',
  closer: 'M7 2.500a4.500 4.500 0 1 0 0 9 4.500 4.500 0 0 0 0-9M10.200 10.200 14 14M7 5v4M5 7h4',
  find: 'M7 2.500a4.500 4.500 0 1 0 0 9 4.500 4.500 0 0 0 0-9M10.200 10.200 14 14',
  grid: 'M2 2h12v12H2zM6 2v12M10 2v12M2 6h12M2 10h12',
  snap: 'M4 2v6a4 4 0 0 0 8 0V2M4 5h0M2.5 2h3v3h-3zM10.500 2h3v3h-3z',
  outlines: 'M3 5h7v6H3zM6 3h7v6',
  labels: 'M2 3h7l5 5-5 5H2zM5 8h.2',
  unseen: 'M1.500 8S4 3.500 8 3.500 14.500 8 14.500 8 12 12.500 8 12.500 1.500 8 1.500 8zM2 14 14 2',
  left: 'M2 1.500v13M4.500 4h9v3h-9zM4.500 9.500h5v3h-5z',
  centre: 'M8 1.500v13M3 4h10v3H3zM5 9.500h6v3H5z',
  right: 'M14 1.500v13M2.500 4h9v3h-9zM6.500 9.500h5v3h-5z',
  top: 'M1.500 2h13M4 4.500h3v9H4zM9.500 4.500h3v5h-3z',
  middle: 'M1.500 8h13M4 3h3v10H4zM9.500 5h3v6h-3z',
  bottom: 'M1.500 14h13M4 2.500h3v9H4zM9.500 6.500h3v5h-3z',
  across: 'M2 2v12M14 2v12M6.500 4.500h3v7h-3z',
  down: 'M2 2h12M2 14h12M4.500 6.500h7v3h-7z',
  forward: 'M2 6h7v8H2zM7 2h7v8h-2M11 6V4M9.500 5.500 11 4l1.500 1.500',
  backward: 'M7 2h7v8H7zM9 12v2H2V6h3M4 9v3M2.700 10.700 4 12l1.300-1.300',
  copy: 'M5 5h9v9H5zM3 11H2V2h9v1',
  remove: 'M3 4.500h10M6 4.500V2.500h4v2M4.500 4.500l.7 9h5.600l.7-9',
  reset: 'M3 8a5 5 0 1 0 1.800-3.800M3 2.500v3h3',
  heard: 'M2 6v4h3l4 3V3L5 6zM11.500 5.500a3.500 3.500 0 0 1 0 5',
  window: 'M2 3h12v10H2zM2 6h12',
  picture: 'M2 3h12v10H2zM2 11l4-4 3 3 2-2 3 3',
  text: 'M3 3h10v2M8 3v10M6 13h4',
  buffer: 'M2 2h9v9H2zM5 13.500h8.500V5M5 6.500h3M6.500 5v3',
  button: 'M1.500 5h13v6h-13zM5 8h6',
  other: 'M3 8h.5M8 8h.5M13 8h.5',
  style: 'M3 13l6-6M8 4l4 4M10 2l4 4-2 2-4-4z',
  locked: 'M4 7h8v7H4zM5.500 7V5a2.500 2.500 0 0 1 5 0v2',
};

export function icon(name) {
  const picture = document.createElementNS(SVG, 'svg');
  picture.setAttribute('viewBox', '0 0 16 16');
  picture.setAttribute('aria-hidden', 'true');
  picture.dataset.icon = name;
  picture.appendChild(document.createElementNS(SVG, 'path')).setAttribute('d', strokes[name] ?? strokes.other);
  return picture;
}

export const button = (label, run, properties = {}) =>
  el('button', { type: 'button', on: { click: run }, ...properties }, label);

/** A button that shows an icon and tells its name and key in a tooltip. */
export const iconButton = (name, label, run, properties = {}) =>
  button(icon(name), run, { class: 'icon', title: label, 'aria-label': label, ...properties });

/** A line that is sent on Enter and when it is left; Escape brings back what was there. */
export function line(before, send, properties = {}) {
  const input = el('input', { type: 'text', value: before, spellcheck: false, autocomplete: 'off', ...properties });
  const leave = () => {
    delete input.dataset.typing;
    if (input.value === before) return;
    before = input.value;
    send(input.value, input);
  };
  input.addEventListener('input', () => { input.dataset.typing = '1'; });
  input.addEventListener('change', leave);
  input.addEventListener('keydown', (event) => {
    if (event.key === 'Enter') leave();
    else if (event.key === 'Escape' && input.value !== before) {
      input.value = before;
      delete input.dataset.typing;
      event.stopPropagation();
    }
  });
  return input;
}

/** Draws anew. The field with the focus is found again by its name, with what is being typed in it. */
export function keepFocus(root, draw) {
  const old = document.activeElement;
  const name = root.contains(old) && old.dataset.field;
  draw();
  const next = name && !old.isConnected && root.querySelector(`[data-field="${CSS.escape(name)}"]`);
  if (!next) return;
  if (old.dataset.typing) {
    next.value = old.value;
    next.dataset.typing = '1';
  }
  next.focus({ preventScroll: true });
  if (old.type === 'text' && next.type === 'text') next.setSelectionRange(old.selectionStart, old.selectionEnd);
}

const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: 10, PageUp: -10, Home: -1e6, End: 1e6 };
/** Where a key leads to in a list; null for other keys. */
export function stepInList(event, at, count) {
  const step = steps[event.key];
  if (!step || !count || event.altKey || event.ctrlKey) return null;
  event.preventDefault();
  event.stopPropagation();
  return Math.min(Math.max(at + step, 0), count - 1);
}

/**
 * A list that arrow keys go through: `at()` is the row that is marked, `mark(number)` marks another one, which is then
 * brought into view, and Enter is `take(number)`. `show(rows)` fills it.
 */
export function listbox(properties, { at, mark, take }) {
  const list = el('ul', { role: 'listbox', tabIndex: 0, ...properties, on: { keydown(event) {
    const next = stepInList(event, at(), list.children.length);
    if (next !== null) {
      mark(next, event);
      list.children[next]?.scrollIntoView({ block: 'nearest' });
    } else if (event.key === 'Enter') {
      event.preventDefault();
      event.stopPropagation();
      take(at());
    }
  } } });
  list.show = (rows) => {
    put(list, rows);
    list.setAttribute('aria-activedescendant', rows[at()]?.id ?? '');
  };
  return list;
}

/** Some of a few: [{value, label, title}]; `chosen` is called with the value. Arrow keys go through them. */
export function segments(label, choices, chosen) {
  const buttons = choices.map(({ value, label: text, title }) =>
    button(text, () => chosen(value), { role: 'radio', title }));
  const group = el('div', { class: 'segments', role: 'radiogroup', 'aria-label': label, on: { keydown(event) {
    const step = { ArrowRight: 1, ArrowDown: 1, ArrowLeft: -1, ArrowUp: -1 }[event.key];
    const from = buttons.indexOf(document.activeElement);
    if (!step || from < 0) return;
    const next = buttons[(from + step + buttons.length) % buttons.length];
    next.focus();
    next.click();
    event.preventDefault();
    event.stopPropagation();
  } } }, buttons);
  group.show = (value) => choices.forEach((choice, i) => {
    buttons[i].setAttribute('aria-checked', choice.value === value);
    buttons[i].tabIndex = choice.value === value ? 0 : -1;
  });
  return group;
}
