#include "fault_codes.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace vcc::kit {

namespace {

using enum FaultCode;

constexpr FaultRow rows[] = {
    // sources
    {not_toml, "The source is not TOML", "The reader of TOML stops at this place; nothing behind it is looked at.",
     "[[slot]"},
    {unfit_character, "A character that a source cannot hold",
     "A source is UTF-8. Outside of texts and comments it has ASCII characters only, and space and tab are its blanks.",
     "text = “Leave”"},
    {unknown_entry, "An entry that means nothing here", "It is no field of a record and no other entry of this table.",
     "colour = 12"},
    {unknown_name, "A name that stands for no number",
     "Names are built in, or the source adds them under [names.colour], [names.sound] and so on.",
     "fore_colour = \"ambre_8\""},
    {wrong_kind, "A value of the wrong kind", "Numbers stand without quotes, texts and names in quotes.",
     "dest_y = \"420\""},
    {out_of_range, "A number outside its range", "Records are 0 to 199; fields hold numbers of 32 bits.",
     "index = 200"},
    {index_missing, "A record without its number", "Every [[slot]] and [[toggle]] says where it stands: index = 3.",
     "[[slot]]\ntext = \"Leave\""},
    {described_twice, "A record that is described twice", "Give one of the two another index.",
     "[[slot]]\nindex = 3\n[[slot]]\nindex = 3"},
    {unknown_style, "A style that is not there", "A record's style names a table [style.NAME] of the same source.",
     "style = \"buton\""},
    {style_circle, "A style that builds on itself", "Styles may build on others, but not in a circle.",
     "[style.a]\nstyle = \"a\""},
    {text_too_long, "A text that does not fit its field", "text and help_file take 90 characters, name takes 31.",
     "name = \"the button that opens the options\""},
    {not_latin1, "A character outside Windows Latin-1", "Texts reach the program as bytes of Windows Latin-1.",
     "text = \"✓\""},
    {language_missing, "A value that is not there in every language",
     "A table by language has a value for en and for de, and nothing else.", "text = { en = \"Leave\" }"},
    {list_length, "A list that does not fit its repetition", "A list has one value for each repetition of its record.",
     "repeat = { count = 3 }\ntext = [\"a\", \"b\"]"},
    {bad_repeat, "A repetition that cannot be",
     "repeat is a table with a count from 1 to 200, perhaps a step, and what is added to number fields.",
     "repeat = { count = 0 }"},
    {bad_screen_name, "A screen's name that is no file name", "It has no folder and no extension.",
     "name = \"screens/vcc\""},
    {unread_screen_name, "A screen that the program does not read",
     "The program reads vcc, vcc_options, vcc_options_info and mess; --any-name packs others, for modules.",
     "name = \"menu\""},
    {bad_raw, "Raw bytes that do not fill their field",
     "{ raw = \"...\" } gives every byte of the field as two hexadecimal digits.", "text = { raw = \"00\" }"},
    {copy_missing, "A copy of a slot that is not there", "copy names the index of a slot of the same source.",
     "[[toggle]]\nindex = 1\ncopy = 7"},
    {no_room, "No number left for a record",
     "A pressed look or the text of an aligned label takes the next free number; numbers end at 199.",
     "index = 199\npressed = { fore_colour = \"white\" }"},
    {cannot_align, "A text that cannot be aligned",
     "align and padding need a text, a width to align it in (box_width), and the fonts of the installation.",
     "align = \"centre\"\nbox_width = 0"},
    {unknown_code, "A comment that silences nothing", "It names no code of this table: # vcckit: ignore VK117.",
     "# vcckit: ignore VK999"},

    // records
    {font_unknown, "A font that is not there", "Fonts are 0 to 10.", "font = 11"},
    {colour_unknown, "A colour that is not there", "Colours are 0 to 255, or a name of the colour table.",
     "fore_colour = 300"},
    {half_a_place, "Only one coordinate of a place",
     "A place in pixels counts only when dest_x and dest_y are both set.", "dest_x = 40\ndest_y = 0"},
    {outside_grid, "A cell outside the grid", "Columns and rows count in the cells of the record's font.",
     "column = 200"},
    {toggle_unknown, "A toggle that means nothing", "-1 is inert, 0 can be selected, above 0 is highlighted as well.",
     "toggle = -2"},
    {highlight_missing, "A highlighted look that is not there",
     "A slot with a toggle above 0 needs a toggle record: in a source, highlight = { ... }.", "toggle = 3"},
    {pressed_missing, "A pressed look that is not there",
     "activated names a toggle record: in a source, pressed = { ... } makes it.", "activated = 199"},
    {buffer_empty, "A graphic buffer without a picture", "tools/vcc.buf says which picture is in which buffer.",
     "buffer = 9"},
    {background_small, "A background smaller than the screen", "The picture of slot 0 is at least 800 x 600 pixels.",
     "index = 0\nbuffer = \"widgets\""},
    {piece_outside, "A piece that is not in the picture",
     "src_x and src_y are the left and top edge, box_width and box_height the right and bottom edge (exclusive).",
     "src_x = 5000"},
    {window_unknown, "A text window that is not there", "The text-window file of the language describes the windows.",
     "graphic = 9\ntext = \"TEXT-WIN\""},
    {sound_unknown, "A sound that is not there", "tools/vcc.snd numbers the sounds; 0 is none.", "sound_act = 99"},
    {press_time, "No time for a pressed look", "display_time is in tenths of a second, 0 to 50.", "display_time = 900"},
    {action_unknown, "An action that is not there", "docs/formats.md lists the actions.", "action = 77"},
    {outside_screen, "A slot that reaches outside the screen", "The screen is 800 x 600 pixels.", "dest_x = 790"},
    {text_wide, "A text wider than its box", "It is drawn beyond the box: shorten it, or widen the box.",
     "box_width = 20\ntext = \"Leave the game\""},
    {text_tall, "A text taller than its box", "Its letters reach below the box: give the box the height of the font.",
     "font = \"bold_20\"\nbox_height = 8"},
    {text_unseen, "A text in the colour of its box", "Nobody can read it: change fore_colour or back_colour.",
     "fore_colour = \"grey_3\"\nback_colour = \"grey_3\""},
    {text_control, "A control character in a text", "A text is one line; a line feed or tab shows as a sign or a gap.",
     "text = \"Leave\\nthe game\""},
    {field_without_box, "An entry field without a box", "Only a field with a box_width takes keys.",
     "input_mode = \"text\"\nbox_width = 0"},
    {field_size, "An entry field of an impossible size", "size is the number of characters, 1 to 90.", "size = 91"},
    {field_wide, "An entry field wider than its box", "box_width has room for size cells of the font.",
     "size = 15\nbox_width = 60"},
    {text_unended, "A text field without an end", "The last byte of a text field is zero, or the text runs on.",
     "name: has no zero byte at its end"},
    {help_negative, "A help entry below 0", "0 is no help; entries of help files are above 0.", "help_number = -1"},
    {slots_overlap, "Two slots in one place", "Where both lie the pointer reaches only the first.", "dest_y = 330"},
    {text_untranslated, "The same text in both languages",
     "Where it is meant, a source says so with both: { en = \"Name\", de = \"Name\" }.", "text = \"Leave the game\""},

    // screens as a whole
    {fixed_slot_missing, "A slot that the program needs is missing",
     "The program knows some slots by their numbers: previews, option buttons, values, message lines.",
     "no [[slot]] with index = 8 on the menu"},
    {fixed_slot_form, "A slot of the wrong form", "The program needs a text, a picture, a field or a window there.",
     "index = 45\ninput_mode = \"none\""},
    {fixed_slot_action, "A slot with the wrong action", "The slot's number and its action belong together.",
     "index = 22\naction = 8"},
    {fixed_slot_toggle, "A slot without its toggle record", "The program shows its other look at times.",
     "index = 86\nhighlight = false"},
    {value_record_value, "A value record for another value", "Its action is the number of the value, from 0.",
     "index = 59\naction = 4"},
    {value_record_focus, "A value record that the keyboard reaches", "Its action would be taken for a command.",
     "index = 63\nfocus_skip = false"},
    {value_record_place, "A value record beside its button", "It lies under its button, in the same place.",
     "index = 61\nrow = 20"},
    {value_button_alone, "A value button without its record", "The next slot says the value in its action.",
     "index = 28\naction = 23"},
    {action_missing, "Something that the player cannot do",
     "A menu leads to the modules, the options and out; the options can be accepted and given up.",
     "no slot of the menu with action = \"leave\""},
    {slots_missing, "Too few slots", "The program uses slots up to a fixed number of each screen.",
     "a menu of 5 slots"},
    {languages_differ, "Languages that differ in more than texts", "What a slot does is the same in every language.",
     "action = { en = 3, de = 4 }"},
    {counts_differ, "Languages with different numbers of records", "Pack both languages from one source.",
     "e_vcc.slt has 20 slots, g_vcc.slt has 19"},
    {program_text_wide, "No room for a text of the program",
     "The program writes labels and explanations into this slot; it is too narrow for the widest.",
     "index = 56\ncolumn = 95"},

    // files
    {file_missing, "A file that the program needs is missing", "Put it there under the name that the fault gives.",
     "images/morv3.pcx"},
    {file_unread, "A file that the control centre does not read",
     "Nothing names it. If a module reads it, --ignore VK302 keeps quiet about such files.",
     "tools/language/english/e_menu.slt"},
    {slot_file_damaged, "A slot file that is not whole", "Pack the screen's source again.", "a file cut at 1000 bytes"},
    {picture_unreadable, "A picture that the program cannot read",
     "Pictures are PCX of 8 bits with a palette or of 24 bits, at most 4096 pixels a side; vcckit convert makes them.",
     "a PNG file that is called menu.pcx"},
    {file_cut, "A file that ends too early", "It is shorter than its own header says: write it again.",
     "a copy that was interrupted"},
    {picture_size, "A picture of the wrong size", "Backgrounds are 800 x 600 pixels, the pointer at most 64 x 64.",
     "images/morv1.pcx of 640 x 480 pixels"},
    {film_unreadable, "A film that cannot be shown",
     "Films are AVI files with a video stream; vcckit convert makes them.", "images/Zentrik.avi without a picture"},
    {film_size, "A film larger than the screen", "Only its middle of 800 x 600 pixels is shown.",
     "images/Zentrik.avi of 1024 x 768 pixels"},
    {module_unfit, "A module that cannot be entered", "docs/modules.md says what a module must export.",
     "hq.so without the entry hq"},
    {font_unreadable, "A file that is no font", "Fonts are TrueType files.", "fonts/arial.ttf"},
    {keyboard_mapping, "A keyboard mapping with a wrong line", "Its keys stand for numbers, the codes of characters.",
     "key1 = a"},
    {log_folder_missing, "No folder for the log", "Make data/logfiles: the program cannot log without it.",
     "data/logfiles"},
    {buffer_unknown, "A graphic buffer that is not there", "Buffers are 0 to 24.", "+25"},
    {buffer_line_empty, "An empty line in the buffer list", "It is taken for the name of a picture.", ""},
    {buffer_taken, "A graphic buffer that is taken", "Every picture has its own buffer; the program makes 21 to 24.",
     "+23\nimages/menu.pcx"},
    {buffer_missing, "A graphic buffer that the program needs", "0 and 3 hold pictures of at least 800 x 600 pixels.",
     "no +3 in tools/vcc.buf"},
    {sound_line, "A line that the sound set-up passes over", "Lines begin with #, +, &, $, *, - or the section sign.",
     "hover.wav"},
    {sound_entry_unknown, "A sound entry that cannot be used",
     "1 to 189 are effects, 190 to 200 themes; there are no others, and 0 is never played.", "+201"},
    {sound_entry_twice, "A sound entry that is given twice", "The last one counts.", "+1\n-a.wav\n+1\n-b.wav"},
    {sound_name_long, "A name that will be cut", "Names of sounds and of their files have at most 20 characters.",
     "-a_very_long_file_name.wav"},
    {theme_order, "A theme out of order", "Themes follow one another from 190 on; one out of order disables all music.",
     "+190\n-a.wav\n+192\n-b.wav"},
    {sound_unreadable, "A sound that cannot be played",
     "Sounds are PCM of 8 or 16 bits, mono or stereo, 1000 to 192000 Hz.", "a WAV file of 24 bits"},
    {theme_seam, "A theme that does not run into itself",
     "It is played again and again: its end must meet its beginning without a click, a fade or a pause.",
     "a theme that fades out"},
    {sound_entry_missing, "A sound entry that is missing", "Films are played with 181 and 182, music begins at 190.",
     "no +181 in tools/vcc.snd"},
    {theme_unknown, "A chosen theme that is not there",
     "The settings choose among the themes of tools/vcc.snd, from 0.", "vcc_theme = 9"},

    // texts
    {window_number, "A text window out of range", "Windows are 0 to 29; reading ends at a greater number.", "+31"},
    {window_value, "A number of a window out of range", "docs/formats.md lists what each line takes.", "s4000"},
    {window_edges, "A window with impossible edges", "Left before right, top before bottom, and within the screen.",
     "xo300\nxu200"},
    {window_line, "A line that a window passes over", "Edges are xo, yo, xu and yu.", "xa20"},
    {window_missing, "A window that is missing", "The program reads its place or colours, or both languages need it.",
     "no +22 in e_factory.tw"},
    {window_in_cells, "A help window in cells", "The help window is placed in pixels: give it w1.", "w0"},
    {message_number, "A message out of range", "Messages are 0 to 299.", "+300"},
    {message_line, "A line that belongs to no message", "A line +0 to +299 goes before each message of one line.",
     "+4\nfirst line\nsecond line"},
    {message_twice, "A message that is given twice", "The last one counts.", "+4\na\n+4\nb"},
    {message_missing, "A message in one language only", "Both languages have the same numbers.", "+5"},
    {language_choice, "No language is chosen", "The first character of tools/language.ini is 1 or 2.", "english"},
    {screen_text_number, "A text of the screens that does not exist", "docs/formats.md lists the numbers.", "+140"},
    {screen_text_long, "A text of the screens that is cut", "At most 89 characters are shown.",
     "+4\na line of ninety characters"},
    {screen_text_twice, "A text of the screens that is given twice", "The last one counts.", "+4\na\n+4\nb"},
    {help_missing, "A help entry that is not there", "help_file and help_number of a slot name a file and an entry.",
     "help_number = 41"},
    {help_unended, "A help entry without an end", "End it with a line # or the next entry.", "+1\nP1\n-.Text"},
    {help_empty, "A help entry without text", "After the header every text line begins with -.", "+1\nP1\n#"},
    {help_value, "A number of a help header out of range", "docs/formats.md lists what each header line takes.",
     "W333"},
    {help_page_missing, "A further help page that is not there", "The header counts and names the pages.", "P2\nQ99"},
    {help_outside, "A help text outside its window", "Begin a further page, or break the line earlier.", "X-1"},
    {help_line_cut, "A help line that is cut", "At most 65 characters of a text line are shown.",
     "-.a line of seventy characters"},
    {help_utf8, "A help file in UTF-8", "Help files are Windows Latin-1: save the file in this encoding.",
     "-.FÃ¼r den Kommandanten"},
    {help_header, "A help header of an unknown letter",
     "Header lines are told by their order: P, Q for each further page, F, C, W, S, T, X, Y.", "+1\nP1\nZ5"},

    // settings
    {settings_line, "A line that is no setting", "Lines are [section], key = value, or comments that begin with #.",
     "= 5"},
    {setting_twice, "A setting that is given twice", "The first one counts.", "vcc_theme = 1\nvcc_theme = 2"},
    {section_unknown, "A section that nobody reads", "docs/settings.md lists the sections.", "[VELDOR_SUOND]"},
    {setting_unknown, "A setting that nobody reads", "docs/settings.md lists the keys.", "frame_rests = 2"},
    {setting_value, "A setting out of range", "docs/settings.md lists what each key takes.", "vcc_theme = 12"},
    {setting_without_section, "A setting before the first section", "Put it below its [section].", "vcc_theme = 1"},
};

static_assert(std::ranges::is_sorted(rows, {}, &FaultRow::code), "the table is by code");
static_assert(std::ranges::adjacent_find(rows, {}, &FaultRow::code) == std::ranges::end(rows));

} // namespace

std::span<const FaultRow> fault_rows() {
    return rows;
}

std::string code_text(FaultCode code) {
    char text[8] = {};
    std::snprintf(text, sizeof text, "VK%03d", static_cast<int>(code));
    return text;
}

const FaultRow* find_fault_row(std::string_view code) {
    constexpr std::size_t length = 5;
    if (code.size() != length || (code[0] | 0x20) != 'v' || (code[1] | 0x20) != 'k')
        return nullptr;
    int number = 0;
    const char* const end = code.data() + code.size();
    if (std::from_chars(code.data() + 2, end, number).ptr != end)
        return nullptr;
    const auto* const found = std::ranges::find(rows, FaultCode{number}, &FaultRow::code);
    return found == std::ranges::end(rows) ? nullptr : found;
}

} // namespace vcc::kit
