// Dialogs and popovers: closed by Escape, the focus returns to where it was.
import { button, el } from './dom.js';

/** A modal dialog; gives back a function that closes it. Buttons: [{label, run, primary}]; `run` says false to stay. */
export function dialog(title, content, buttons, { closed, wide, bare } = {}) {
  const returnTo = document.activeElement;
  const close = () => element.close();
  const element = el('dialog', { class: wide ? 'wide' : '', 'aria-label': title }, bare ? null : el('h2', {}, title),
    content, el('div', { class: 'buttons', hidden: bare }, buttons.map((each) =>
      button(each.label, async () => {
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
