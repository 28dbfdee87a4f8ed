// What is told and asked: short messages in the line under everything, which go by themselves, banners that stay until
// they are dealt with, and dialogs and popovers, closed by Escape; the focus returns to where it was.
import { button, el, find } from './dom.js';

export function say(text, kind = 'good') {
  const message = el('div', { class: `toast ${kind}`, title: text }, text);
  find('toasts').replaceChildren(message);
  setTimeout(() => message.remove(), kind === 'bad' ? 9000 : 3500);
}

/** Shows a banner under this name, or takes it away when there is no text. */
export function banner(name, text, buttons = [], kind = '') {
  const id = `banner-${name}`;
  const old = find(id);
  if (!text) return void old?.remove();
  const shown = el('div', { id, class: `banner ${kind}`, role: 'alert' }, el('span', { class: 'grow' }, text), buttons);
  if (old) old.replaceWith(shown);
  else find('banners').append(shown);
}

/** A modal dialog; gives back a function that closes it. Buttons: [{label, run, primary}]; `run` says false to stay. */
export function dialog(title, content, buttons = [], { closed, wide } = {}) {
  const returnTo = document.activeElement;
  const close = () => element.close();
  const element = el('dialog', { class: wide ? 'wide' : '', 'aria-label': title },
    buttons.length > 0 && el('h2', {}, title), content,
    el('div', { class: 'buttons', hidden: !buttons.length }, buttons.map((each) => button(each.label, async () => {
      if (await each.run?.() !== false) close();
    }, { class: each.primary ? 'primary' : '' }))));
  element.addEventListener('close', () => {
    element.remove();
    returnTo?.focus?.();
    closed?.();
  });
  element.addEventListener('keydown', (event) => event.stopPropagation());
  document.body.append(element);
  element.showModal();
  element.querySelector('.primary')?.focus();
  return close;
}

/** Something small beside a control; gives back a function that closes it, as Escape and a click elsewhere do. */
export function popover(anchor, content) {
  const element = el('div', { popover: 'auto' }, content);
  element.addEventListener('toggle', (event) => {
    if (event.newState !== 'closed') return;
    element.remove();
    anchor.focus();
  });
  element.addEventListener('keydown', (event) => event.stopPropagation());
  document.body.append(element);
  element.showPopover();
  const box = anchor.getBoundingClientRect();
  const { width, height } = element.getBoundingClientRect();
  element.style.left = `${Math.max(4, Math.min(box.left, innerWidth - width - 8))}px`;
  element.style.top = `${box.bottom + height + 4 < innerHeight ? box.bottom + 3 : Math.max(4, box.top - height - 3)}px`;
  return () => element.hidePopover();
}
