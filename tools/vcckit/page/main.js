// Starts the page: what the project is, its documents, then the parts that show them.
import './bar.js';
import './list.js';
import './properties.js';
import './below.js';
import './status.js';
import './pointer.js';
import { banner } from './dialogs.js';
import { find } from './dom.js';
import { listenWhileSeen, loadAll } from './events.js';
import { layOut } from './picture.js';
import { showTheme } from './preferences.js';
import { offerRecovery } from './questions.js';
import { completeView, on, state, tell, viewOf } from './state.js';

const PLACE = 'veldor-screens-place'; // where this tab was, for a reload
const remembered = ['view', 'language', 'row', 'module', 'about', 'list', 'selection'];

function remember() {
  const place = Object.fromEntries(remembered.map((name) => [name, state[name]]));
  sessionStorage.setItem(PLACE, JSON.stringify(place));
}
function comeBack() {
  try {
    const place = JSON.parse(sessionStorage.getItem(PLACE) ?? '{}');
    for (const name of remembered) if (name in place && place[name] !== undefined) state[name] = place[name];
  } catch { /* begins at the menu */ }
  if (!viewOf(state.view)) state.view = state.project.views[0].view;
  if (!Array.isArray(state.selection)) state.selection = [];
  completeView();
}

async function start() {
  showTheme();
  try {
    await loadAll();
  } catch (error) {
    banner('start', `The project cannot be shown: ${error.message}`, [], 'bad');
    return;
  }
  comeBack();
  layOut();
  for (const topic of ['project', 'list', 'view', 'selection']) tell(topic);
  on('view selection list', remember);
  listenWhileSeen();
  find('viewport').focus();
  offerRecovery(state.project.recovered);
  document.documentElement.dataset.ready = 'yes';
}

start();
