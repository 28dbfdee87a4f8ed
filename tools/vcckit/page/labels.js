// What fields are called in the panels. A label may differ by the kind of record.
import { el } from './dom.js';

const labels = {
  text: 'Text', align: 'Alignment', padding: 'Padding', font: 'Font', fore_colour: 'Text colour',
  back_colour: 'Box colour', input_mode: 'Entry', size: 'Characters',
  dest_x: 'Left', dest_y: 'Top', column: 'Column', row: 'Row',
  box_width: { text: 'Width', picture: 'To x' }, box_height: { text: 'Height', picture: 'To y' },
  graphic: 'Shows', buffer: 'Picture', picture: 'File', src_x: 'From x', src_y: 'From y',
  hidden: 'Hidden', focus_skip: 'Keys pass it by', draw_flags: 'Drawing flags', sound_flags: 'Sound flags',
  action: 'Action', toggle: 'Reacts', activated: 'Pressed record', display_time: 'Stays pressed',
  sound: 'Sound when drawn', sound_act: 'Sound when pressed',
  help_file: 'Help file', help_number: 'Help entry',
  name: 'Name', min_value: 'Least', max_value: 'Most', reserved: 'Reserved',
  left: 'Left', top: 'Top', right: 'Right', bottom: 'Bottom', pixels: 'In pixels', title: 'Title',
  style: { window: 'Fill', '': 'Styles' }, colour: 'Colour', title_colour: 'Title colour',
  red: 'Red', green: 'Green', blue: 'Blue', alpha: 'Opacity', shadow: 'Shadow', grid: 'Grid lines',
  open_sound: 'Sound on opening', close_sound: 'Sound on closing', pointer_offset: 'Pointer from left',
};

/** `kind` is that of what is shown: text, picture, window, style ... */
export function labelOf(name, kind) {
  const label = labels[name] ?? name;
  return typeof label === 'string' ? label : label[kind] ?? label[''] ?? label.text;
}
/** The name that sources have for a field, where its label is another word. */
export const rawName = (name, kind) => (labelOf(name, kind).toLowerCase() === name ? null : el('code', {}, name));
