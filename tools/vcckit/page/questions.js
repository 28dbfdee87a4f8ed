// Nothing is lost unasked: lines that were changed here and in the file are asked about one after the other. Changes
// that a session before left unsaved are offered before anything else; until then nothing can be changed.
import { banner, dialog } from './dialogs.js';
import { button, el } from './dom.js';
import { recover, resolve } from './edits.js';
import { allDocuments, on } from './state.js';

let open = false;

const text = (title, content) => el('div', { class: 'version' }, el('h3', {}, title),
  el('pre', {}, content || '(nothing)'));

function ask(document) {
  if (open) return;
  open = true;
  const [conflict] = document.conflicts;
  const choose = (choice) => () => resolve(document.name, 0, choice);
  if (conflict.removed) {
    dialog(`${document.file} is gone`, el('p', {}, 'It was changed here and not saved. Kept, it is written with the ' +
      'next save.'), [{ label: 'Later' }, { label: 'Let it go', run: choose('theirs') },
      { label: 'Keep it', run: choose('mine'), primary: true }], { closed() { open = false; } });
    return;
  }
  dialog(`${document.name}, line ${conflict.line}: changed here and in the file`, [
    el('p', {}, 'Both texts are safe until you choose.', document.conflicts.length > 1
      ? ` ${document.conflicts.length - 1} more after this one.` : ''),
    el('div', { class: 'versions' }, text('Here', conflict.mine), text('In the file', conflict.theirs),
      text('Before', conflict.base)),
  ], [{ label: 'Later' }, { label: 'Both', run: choose('both') }, { label: 'The file’s', run: choose('theirs') },
    { label: 'Mine', run: choose('mine'), primary: true }], { wide: true, closed() { open = false; } });
}

function draw() {
  const document = allDocuments().find((each) => each.conflicts.length);
  banner('conflict', document && (document.conflicts[0].removed ? `${document.file} is gone, and was changed here.`
    : `${document.file} was changed in the same lines as here.`),
    document ? [button('Decide', () => ask(document))] : []);
}
on('document project', draw);

export function offerRecovery(recovered) {
  if (!recovered) return;
  let answered = false;
  const answer = (take) => async () => {
    answered = await recover(take);
    return answered;
  };
  const when = new Date(recovered.when * 1000).toLocaleString();
  banner('recover');
  dialog('Unsaved changes', el('p', {}, `The editor ended without saving ${recovered.documents.join(', ')}. `,
    `The last change was made ${when}. Taken back, every step of it can be undone.`),
  [{ label: 'Drop them', run: answer(false) }, { label: 'Take them back', run: answer(true), primary: true }],
  { closed() {
    if (answered) return;
    banner('recover', 'Changes that were not saved are still offered; until that is decided nothing can be changed.',
      [button('Decide', () => offerRecovery(recovered))]);
  } });
}
