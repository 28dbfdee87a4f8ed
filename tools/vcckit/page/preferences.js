// What a person has set for themselves: kept by the browser, never in the project.
import { tell } from './state.js';

const KEY = 'veldor-screens';
const standard = { theme: 'system', zoom: 0, grid: false, snap: true, outlines: true, labels: false, unseen: false,
  gridFont: 6, below: 'faults', belowHeight: {} };

export const preferences = { ...standard, ...stored() };

function stored() {
  try {
    const read = JSON.parse(localStorage.getItem(KEY) ?? '{}');
    return Object.fromEntries(Object.entries(read).filter(([key, value]) => typeof value === typeof standard[key]));
  } catch {
    return {};
  }
}

export function prefer(change) {
  Object.assign(preferences, change);
  try {
    localStorage.setItem(KEY, JSON.stringify(preferences));
  } catch { /* a browser that keeps nothing still edits */ }
  if ('theme' in change) showTheme();
  tell('preferences', change);
}

const system = matchMedia('(prefers-color-scheme: dark)');
export const isDark = () => preferences.theme === 'dark' || (preferences.theme === 'system' && system.matches);

export function showTheme() {
  document.documentElement.classList.toggle('dark', isDark());
}
system.addEventListener('change', () => { showTheme(); tell('preferences', {}); });
