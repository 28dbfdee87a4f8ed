// Short messages in the line under everything, which go by themselves, and banners that stay until they are dealt with.
import { el, find } from './dom.js';

export function say(text, kind = 'good') {
  const message = el('div', { class: `toast ${kind}`, title: text }, text);
  find('toasts').replaceChildren(message);
  setTimeout(() => message.remove(), kind === 'bad' ? 9000 : 3500);
}

/** Shows a banner under this name, or takes it away when there is no text. */
export function banner(name, text, buttons = [], kind = '') {
  const id = `banner-${name}`;
  const old = find(id);
  if (!text) {
    old?.remove();
    return;
  }
  const shown = el('div', { id, class: `banner ${kind}`, role: 'alert' }, el('span', { class: 'grow' }, text), buttons);
  if (old) old.replaceWith(shown);
  else find('banners').append(shown);
}
