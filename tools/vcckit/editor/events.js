// What happens elsewhere: another page's change, a file on disk, faults of the whole installation.
import { getJson } from './api.js';
import { banner } from './messages.js';
import { load as loadAll } from './project.js';
import { refresh } from './picture.js';
import { adopt, state, tell } from './state.js';

let wasLost = false;

export function listen() {
  const stream = new EventSource('events');
  stream.addEventListener('document', (event) => {
    const { name, revision } = JSON.parse(event.data);
    if ((state.documents.get(name)?.revision ?? -1) < revision) load(name);
  });
  stream.addEventListener('files', () => reload());
  stream.addEventListener('faults', (event) => {
    state.faults = JSON.parse(event.data).faults;
    tell('faults');
  });
  stream.addEventListener('open', () => {
    banner('offline');
    if (wasLost) reload();
    wasLost = false;
  });
  stream.addEventListener('error', () => {
    wasLost = true;
    banner('offline', 'The tool does not answer. This page shows what it knew; changes are not taken until it is back.',
      [], 'bad');
  });
}

async function load(name) {
  adopt(await getJson('document', { name }));
}

/** Everything anew: pictures or sounds have changed, or the connection was lost meanwhile. */
async function reload() {
  try {
    await loadAll();
    tell('project');
    refresh({ always: true });
  } catch { /* the stream tells when the tool is back */ }
}
