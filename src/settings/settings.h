// The settings that all four programs share, in memory and in their file.
#pragma once

#include "core/installation.h"

#include <array>
#include <cstdint>
#include <string>

namespace vcc {

inline constexpr int hq_module = static_cast<int>(Module::hq), factory_module = static_cast<int>(Module::factory),
                     battle_module = static_cast<int>(Module::battle),
                     cc_module = static_cast<int>(Module::control_centre);

struct ModuleVolumes {
    int effects = 0; ///< level 0 to 10
    int music = 0;   ///< level 0 to 10
};

/// What the options screen edits.
struct Settings {
    std::array<ModuleVolumes, module_count> volumes{};
    std::array<int, module_count> theme{}; ///< 0 to number_of_themes - 1
    std::int8_t screen_mode = 0;           ///< 0 window, non-zero full screen
    int resolution = 0;                    ///< 0 to 4; for other programs
    int bitmap_depth = 0;                  ///< 0 32-bit, 1 24-bit, 2 16-bit, 3 15-bit
    int anti_aliased = 0;                  ///< copy of anti_aliased_text
    int brontar_anim = 0;                  ///< 0, 1
    int sprite_speed = 0;                  ///< 0 to 3
    int message_delay = 0;                 ///< 0 to 3
    int message_detail = 0;                ///< 0 to 3
    char player_name[16] = {};             ///< 15 characters usable
    char ip_address[16] = {};              ///< 15 characters usable; "." when empty
    int keyboard = 0;                      ///< 0 to 5
};

inline constexpr int font_count = 11; ///< fonts described by the settings

inline Settings settings;
inline std::array<int, module_count> theme_loop{}; ///< 1: all themes one after another, 0: the chosen theme repeats
inline int number_of_themes = 0;                   ///< 0 to 11; 0 when music is off
inline int anti_aliased_text = 1;                  ///< text is drawn with smoothed edges
inline int frame_rest = 0;                         ///< milliseconds given up per idle frame, 0 to 20

/// Selects data/configs/vcc.cfg as the library's configuration file and reads it. Selecting it again first writes
/// pending changes, then reads what other programs have written.
void select_config_file();

/// Writes the changes of set_config_int() and its companions to disk. The file is replaced whole or not at all, and
/// keeps everything else in it, comments included. If it cannot be written, logs that once per run and keeps the
/// changes for the next try. Call it instead of flush_config_file(), and before allegro_exit(). Invalidates texts that
/// get_config_string() has returned.
void flush_settings();

/// A "yes" or "no" key: true if its value begins with "yes" or the key is missing; an empty value is false.
bool config_flag(const char* section, const char* key);

void load_settings();
void reset_settings();
void save_settings();

} // namespace vcc
