// Changes that a session before left unsaved are offered before anything else; until then nothing can be changed.
import { dialog } from './dialogs.js';
import { el } from './dom.js';
import { recover } from './edits.js';
import { banner } from './messages.js';

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
      [el('button', { type: 'button', on: { click: () => offerRecovery(recovered) } }, 'Decide')]);
  } });
}
