// Changes that a session before left unsaved are offered once, before anything else.
import { dialog } from './dialogs.js';
import { el } from './dom.js';
import { recover } from './edits.js';

export function offerRecovery(recovered) {
  if (!recovered) return;
  const when = typeof recovered.when === 'number' ? new Date(recovered.when * 1000).toLocaleString() : recovered.when;
  dialog('Unsaved changes', el('p', {}, `The editor ended without saving ${recovered.documents.join(', ')}. `,
    `The last change was made ${when}. Taken back, every step can still be undone.`),
  [{ label: 'Drop them', run: () => recover(false) },
    { label: 'Take them back', run: () => recover(true), primary: true }]);
}
