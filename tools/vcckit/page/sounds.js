// Sounds of the installation, heard as they are.
import { address } from './api.js';
import { iconButton } from './dom.js';
import { say } from './messages.js';

let player = null;

export function play(number) {
  player?.pause();
  if (!number) return;
  player = new Audio(address('sound', { number }));
  player.play().catch(() => say(`Sound ${number} cannot be played.`, 'bad'));
}

export function soundButton(number) {
  return iconButton('heard', 'Hear it', () => play(number()));
}
