// The project and all of its documents, read at the start and after the connection was lost; and what happens
// elsewhere: another page's change, a file on disk, faults of the whole installation.
import { getJson, pageName } from './api.js';
import { banner } from './dialogs.js';
import { refresh } from './picture.js';
import { offerRecovery } from './questions.js';
import { adopt, keepWhatIsThere, state, tell } from './state.js';

/** Tells whether another process has answered than before. */
export async function loadAll() {
  const project = await getJson('project');
  const documents = await Promise.all(project.documents.map((name) => getJson('document', { name })));
  giveEveryScreenAView(project, documents);
  const isNew = state.project?.session !== project.session; // another process counts revisions anew
  state.project = project;
  // a change may have been made meanwhile
  const newest = (read) => (!isNew && (state.documents.get(read.name)?.revision ?? -1) > read.revision
    ? state.documents.get(read.name) : read);
  state.documents = new Map(documents.map((each) => [each.name, newest(each)]));
  keepWhatIsThere();
  return isNew;
}

/** A screen without a picture of its own is shown where the program draws it: the explanations with the options. */
function giveEveryScreenAView(project, documents) {
  const options = project.views.find((each) => each.view === 'options');
  for (const { name, kind } of documents) {
    if (kind !== 'screen' || !options || project.views.some((each) => each.document === name)) continue;
    project.views.push({ ...options, view: name, document: name, picture: 'options' });
  }
}

let wasLost = false;
let stream = null;

function listen() {
  stream = new EventSource('events');
  stream.addEventListener('document', (event) => {
    const { name, revision, page } = JSON.parse(event.data);
    if (page !== pageName && (state.documents.get(name)?.revision ?? -1) < revision)
      getJson('document', { name }).then(adopt);
  });
  stream.addEventListener('files', () => reload());
  stream.addEventListener('faults', (event) => {
    state.faults = JSON.parse(event.data).faults;
    tell('faults');
  });
  stream.addEventListener('notices', (event) => banner('notices', JSON.parse(event.data).notices.join(' '), [], 'bad'));
  stream.addEventListener('open', () => {
    banner('offline');
    if (wasLost) reload();
    wasLost = false;
  });
  stream.addEventListener('error', () => {
    wasLost = true;
    banner('offline', 'The tool does not answer, and takes no changes. Start vcckit edit on this folder again: this ' +
      'page comes back by itself, with what was not saved.', [], 'bad');
    if (stream.readyState === EventSource.CLOSED) setTimeout(listen, 2000);
  });
}

/** A browser has few connections to one server: a tab that is not seen hears nothing, and looks later. */
export function listenWhileSeen() {
  const follow = () => {
    if (!document.hidden) return listen();
    stream?.close();
    wasLost = true;
  };
  document.addEventListener('visibilitychange', follow);
  listen();
}

/** Everything anew: pictures or sounds have changed, or the connection was lost meanwhile. */
async function reload() {
  try {
    const isNew = await loadAll();
    tell('project');
    refresh({ always: true });
    if (isNew) offerRecovery(state.project.recovered);
  } catch { /* the stream tells when the tool is back */ }
}
