// Every kind of fault that the tool tells of, with a code that never changes its meaning.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vcc::kit {

/// Numbers are for good: a kind that is given up leaves its number free. 0 to 99 sources, 100 records, 200 screens as a
/// whole, 300 files, 400 texts, 500 settings.
enum class FaultCode {
    not_toml = 1,
    unfit_character = 2,
    unknown_entry = 3,
    unknown_name = 4,
    wrong_kind = 5,
    out_of_range = 6,
    index_missing = 7,
    described_twice = 8,
    unknown_style = 9,
    style_circle = 10,
    text_too_long = 11,
    not_latin1 = 12,
    language_missing = 13,
    list_length = 14,
    bad_repeat = 15,
    bad_screen_name = 16,
    unread_screen_name = 17,
    bad_raw = 18,
    copy_missing = 19,
    no_room = 20,
    cannot_align = 21,
    unknown_code = 22,

    font_unknown = 101,
    colour_unknown = 102,
    half_a_place = 103,
    outside_grid = 104,
    toggle_unknown = 105,
    highlight_missing = 106,
    pressed_missing = 107,
    buffer_empty = 108,
    background_small = 109,
    piece_outside = 110,
    window_unknown = 111,
    sound_unknown = 112,
    press_time = 113,
    action_unknown = 114,
    outside_screen = 115,
    text_wide = 116,
    text_tall = 117,
    text_unseen = 118,
    text_control = 119,
    field_without_box = 120,
    field_size = 121,
    field_wide = 122,
    text_unended = 123,
    help_negative = 124,
    slots_overlap = 125,
    text_untranslated = 126,

    fixed_slot_missing = 201,
    fixed_slot_form = 202,
    fixed_slot_action = 203,
    fixed_slot_toggle = 204,
    value_record_value = 205,
    value_record_focus = 206,
    value_record_place = 207,
    value_button_alone = 208,
    action_missing = 209,
    slots_missing = 210,
    languages_differ = 211,
    counts_differ = 212,
    program_text_wide = 213,

    file_missing = 301,
    file_unread = 302,
    slot_file_damaged = 303,
    picture_unreadable = 304,
    file_cut = 305,
    picture_size = 306,
    film_unreadable = 307,
    film_size = 308,
    module_unfit = 309,
    font_unreadable = 310,
    keyboard_mapping = 311,
    log_folder_missing = 312,
    buffer_unknown = 320,
    buffer_line_empty = 321,
    buffer_taken = 322,
    buffer_missing = 323,
    sound_line = 330,
    sound_entry_unknown = 331,
    sound_entry_twice = 332,
    sound_name_long = 333,
    theme_order = 334,
    sound_unreadable = 335,
    theme_seam = 336,
    sound_entry_missing = 337,
    theme_unknown = 338,

    window_number = 401,
    window_value = 402,
    window_edges = 403,
    window_line = 404,
    window_missing = 405,
    window_in_cells = 406,
    message_number = 410,
    message_line = 411,
    message_twice = 412,
    message_missing = 413,
    language_choice = 414,
    screen_text_number = 415,
    screen_text_long = 416,
    screen_text_twice = 417,
    help_missing = 420,
    help_unended = 421,
    help_empty = 422,
    help_value = 423,
    help_page_missing = 424,
    help_outside = 425,
    help_line_cut = 426,
    help_utf8 = 427,
    help_header = 428,

    settings_line = 501,
    setting_twice = 502,
    section_unknown = 503,
    setting_unknown = 504,
    setting_value = 505,
    setting_without_section = 506,
};

struct FaultRow {
    FaultCode code;
    std::string_view title;       ///< what is wrong, without the particulars
    std::string_view explanation; ///< why it matters and what to do: one or two sentences
    std::string_view example;     ///< what is told of
};

/// The table, by code.
std::span<const FaultRow> fault_rows();

/// "VK012"
std::string code_text(FaultCode code);

/// The row of a code as it is told, in any letter case; null when there is none.
const FaultRow* find_fault_row(std::string_view code);

} // namespace vcc::kit
