// The project and all of its documents, read at the start and after the connection was lost.
import { getJson } from './api.js';
import { keepWhatIsThere, state } from './state.js';

/** Tells whether another process has answered than before. */
export async function load() {
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
