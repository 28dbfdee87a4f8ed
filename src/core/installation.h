// What the program and an installation agree on: file names, sizes, numbers of fixed records, and codes. Constants
// only, shared by the program, vcckit and the benchmarks. Names are spelled as in log lines.
#pragma once

#include <array>
#include <string_view>

namespace vcc {

inline constexpr int layout_width = 800, layout_height = 600; ///< pixels: the display, every screen and background

namespace path {
inline constexpr const char* settings = "data/configs/vcc.cfg";
inline constexpr const char* log_folder = "data/logfiles";
inline constexpr const char* log = "data/logfiles/veldor_log.txt";
inline constexpr const char* accents = "data/compose";
inline constexpr const char* fonts = "fonts";
inline constexpr const char* language_choice = "tools\\language.ini";
inline constexpr const char* buffer_list = "tools/vcc.buf";
inline constexpr const char* sound_setup = "tools/vcc.snd";
inline constexpr const char* pointer = "images/pointer.pcx";
inline constexpr const char* manual = "docs\\veldor_manual.pdf";
inline constexpr const char* german_manual = "docs\\veldor_manual_de.pdf"; ///< optional
inline constexpr const char* help_picture = "factory.pcx";                 ///< written by F4 on a help page
/// Rotate while a pass loads.
inline constexpr std::array<const char*, 4> backgrounds{"images\\morv1.pcx", "images\\morv2.pcx", "images\\morv3.pcx",
                                                        "images\\morv4.pcx"};
/// Mapping files by the keyboard setting, 0 to 5.
inline constexpr std::array<std::string_view, 6> keyboards{"data/configs/us.cfg", "data/configs/de.cfg",
                                                           "data/configs/fi.cfg", "data/configs/fr.cfg",
                                                           "data/configs/it.cfg", "data/configs/uk.cfg"};
inline constexpr const char* text_windows = "factory.tw"; ///< after the prefix of the language
} // namespace path

inline constexpr const char* font_section = "VELDOR_VCC"; ///< of the settings file

struct Film {
    const char* path;
    int effect; ///< number of its sound effect
};
inline constexpr std::array<Film, 2> films{{{"images/Zentrik.avi", 181}, {"images/VELDOR_Intro.avi", 182}}};

/// A language's files: tools/language/FOLDER/PREFIX..., and in tools/language/FOLDER/txt its messages and, optionally,
/// its translations of the texts of the screens.
struct LanguageRow {
    std::string_view code; ///< in screen sources
    std::string_view folder;
    std::string_view prefix;
    std::string_view messages;
    std::string_view screen_texts;
};
inline constexpr std::array<LanguageRow, 2> languages{{{"en", "english", "e_", "messages.eng", "screen_texts.eng"},
                                                       {"de", "german", "g_", "messages.ger", "screen_texts.ger"}}};

/// The programs that share the settings, as an index into their volumes and themes.
enum class Module : int { hq, factory, battle, control_centre };
inline constexpr int module_count = 4;

/// Libraries of the game modules by module number. Each exports an entry of its own name.
inline constexpr std::array<const char*, 3> module_names{"hq", "factory", "battle"};

inline constexpr int leave_code = 45; ///< leave the program, or: the screens cannot be loaded

enum class ScreenKind : int { menu, options, info, message };

struct ScreenFile {
    ScreenKind kind;
    std::string_view name; ///< of its slot and toggle file, after the prefix of the language
    int used;              ///< slots addressed by number
    int needed;            ///< with fewer the program does not start
};

namespace menu_slot {
/// A slot, and the preview drawn while the pointer is on it.
struct Preview {
    int slot, picture;
};
inline constexpr std::array<Preview, 5> previews{{{3, 8}, {5, 9}, {7, 10}, {13, 16}, {15, 11}}};
inline constexpr int count = 17;
} // namespace menu_slot

namespace options_slot {
inline constexpr int first_selector = 11; ///< module selector buttons 11 to 14
inline constexpr int selector_end = 15;   ///< part of the selector for the pointer
inline constexpr int first_marker = 16;   ///< module markers 16 to 19
inline constexpr int player_name = 45, ip_address = 53;
inline constexpr int first_value = 56; ///< button and record of each value entry in turn
inline constexpr int value_count = 11;
inline constexpr int first_junction = 78; ///< graphic slots 78 to 81
inline constexpr int loop_button = 86, connector_colours = 88, loop_label = 89;
inline constexpr int count = 90;
/// Slots that only return the selector's marker to its resting look.
inline constexpr std::array<int, 6> resting{45, 46, 50, 53, 83, 85};
} // namespace options_slot

namespace info_slot {
inline constexpr int first_line = 1, line_count = 12;
} // namespace info_slot

inline constexpr int help_line_length = 67; ///< characters shown of a help line
/// Added to the number of a help entry: what it says while a gamepad is used, if the file has that.
inline constexpr int gamepad_help = 100000;

namespace message_slot {
inline constexpr int window = 0, first_line = 2, missing_file = 4, missing_entry = 5, last_line = 9, first_button = 10;
inline constexpr int close = 13, back = 33, forward = 35, count = 36;
} // namespace message_slot

/// In loading order.
inline constexpr std::array<ScreenFile, 4> screen_files{{
    {ScreenKind::menu, "vcc", menu_slot::count, 2},
    {ScreenKind::options, "vcc_options", options_slot::count, options_slot::count},
    {ScreenKind::info, "vcc_options_info", info_slot::first_line + info_slot::line_count, 2},
    {ScreenKind::message, "mess", message_slot::count, 2},
}};

// Text windows addressed by number.
inline constexpr int style_window = 19; ///< template of the highlighted frame and of shadows
inline constexpr int info_window = 21, group_window = 22, value_window = 23, module_window = 24,
                     sound_group_window = 25;

// Graphic buffers addressed by number; those from window_copy_buffer on are created, not loaded.
inline constexpr int screen_buffer = 0;       ///< screens are drawn here, then copied whole to the display
inline constexpr int backdrop_buffer = 3;     ///< background picture of the screens
inline constexpr int window_copy_buffer = 21; ///< background copy for windows 22 to 25
inline constexpr int help_save_buffer = 22;   ///< what lies under a help page
inline constexpr int info_copy_buffer = 23;   ///< background copy for the explanation box
inline constexpr int text_copy_buffer = 24;   ///< clean background under smoothed text

} // namespace vcc
