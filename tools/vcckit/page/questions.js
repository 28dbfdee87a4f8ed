// Nothing is lost unasked: lines that were changed here and in the file are asked about one after the other. Changes
// that a session before left unsaved are offered before anything else; until then nothing can be changed.
import { banner, dialog } from './dialogs.js';
import { button, el } from './dom.js';
import { recover, resolve } from './edits.js';
import { allDocuments, on } from './state.js';

let open = false;

const text = (title, content) => el('div', { class: 'version' }, el('h3', {}, title),
  el('pre', {}, content || '(nothing)'));

function ask({ name, file, conflicts: [{ line, mine, theirs, base, removed }, ...further] }) {
  if (open) return;
  open = true;
  const closed = () => { open = false; };
  const choice = (label, which) => ({ label, primary: which === 'mine', run: () => resolve(name, 0, which) });
  if (removed) {
    dialog(`${file} is gone`, el('p', {}, 'It was changed here and not saved. Kept, it is written with the next save.'),
      [{ label: 'Later' }, choice('Let it go', 'theirs'), choice('Keep it', 'mine')], { closed });
    return;
  }
  dialog(`${name}, line ${line}: changed here and in the file`, [
    el('p', {}, 'Both texts are safe until you choose.',
      further.length > 0 && ` ${further.length} more after this one.`),
    el('div', { class: 'versions' }, text('Here', mine), text('In the file', theirs), text('Before', base)),
  ], [{ label: 'Later' }, choice('Both', 'both'), choice('The file’s', 'theirs'), choice('Mine', 'mine')],
  { wide: true, closed });
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
