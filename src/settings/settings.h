// The settings that all four programs share, and one row per key of their file: what loads, saves, resets and checks
// them, settings/values.h and the tables in docs/settings.md all use these rows.
#pragma once

#include "core/installation.h"
#include "sound/music.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace vcc {

inline constexpr int hq_module = static_cast<int>(Module::hq), factory_module = static_cast<int>(Module::factory),
                     battle_module = static_cast<int>(Module::battle),
                     cc_module = static_cast<int>(Module::control_centre);

constexpr std::size_t index_of(Module module) {
    return static_cast<std::size_t>(module);
}

struct ModuleVolumes {
    int effects = 0; ///< level 0 to 10
    int music = 0;   ///< level 0 to 10
};

/// What the options screen edits.
struct Settings {
    std::array<ModuleVolumes, module_count> volumes{};
    std::array<int, module_count> theme{}; ///< 0 to number_of_themes - 1
    int screen_mode = 0;                   ///< 0 window, non-zero full screen; a signed byte
    int resolution = 0;                    ///< 0 to 4; for other programs
    int bitmap_depth = 0;                  ///< 0 32-bit, 1 24-bit, 2 16-bit, 3 15-bit
    int brontar_anim = 0;                  ///< 0, 1
    int sprite_speed = 0;                  ///< 0 to 3
    int message_delay = 0;                 ///< 0 to 3
    int message_detail = 0;                ///< 0 to 3
    std::string player_name;               ///< at most field_text_limit characters
    std::string ip_address;                ///< likewise; "." when empty
    int keyboard = 0;                      ///< 0 to 5
};

inline constexpr int field_text_limit = 15; ///< characters of the player's name and address
inline constexpr int font_count = 11;       ///< fonts described by the settings

inline Settings settings;
inline std::array<int, module_count> theme_loop{}; ///< 1: all themes one after another, 0: the chosen theme repeats
inline int number_of_themes = 0;                   ///< 0 to 11; 0 when music is off
inline int anti_aliased_text = 1;                  ///< text is drawn with smoothed edges
inline int frame_rest = 0;                         ///< longest sleep of an idle frame in ms, 0 to 100; 0 only yields

enum class SettingKind {
    flag, ///< on if the value begins with "yes" or the key is missing
    number,
    text
};

/// What replaces a number outside its row's range when it is read.
enum class Outside {
    nearest,     ///< the nearest end of the range
    standard,    ///< the hard default
    signed_byte, ///< its lowest byte: 255 is -1
    kept         ///< unchanged: the range is not known until everything is read
};

namespace rows {

/// What the settings store does with a key; a key on its own is read or written where it counts.
enum Use : unsigned {
    on_its_own = 0,
    loaded = 1,  ///< read into its place by load_settings()
    saved = 2,   ///< written from its place by save_settings()
    reset = 4,   ///< read by reset_settings() from the key with "_default" appended
    ensured = 8, ///< created with its default by save_settings() when it is missing
    kept = loaded | saved,
    offered = kept | reset
};

} // namespace rows

/// Where a value is in memory; nothing for a key on its own or one only created.
using Place = std::variant<std::monostate, int*, std::string*>;

struct SettingRow {
    std::string_view section;
    std::string_view key; ///< a "#" stands for the numbers 0 to copies() - 1
    SettingKind kind = SettingKind::number;
    int number = 0;             ///< hard default of a number
    std::string_view text = {}; ///< hard default of a text or flag
    int min = 0, max = 0;       ///< range of a number, ends included; max is the longest length of a text
    unsigned uses = 0;          ///< rows::Use values
    Place place = {};
    std::string_view help = {};
    Outside outside = Outside::nearest;
    std::span<const int> numbers = {};            ///< hard defaults of numbered keys
    std::span<const std::string_view> texts = {}; ///< of numbered texts

    constexpr int standard_number(int copy) const {
        return numbers.empty() ? number : numbers[static_cast<std::size_t>(copy)];
    }
    constexpr std::string_view standard_text(int copy) const {
        return texts.empty() ? text : texts[static_cast<std::size_t>(copy)];
    }
    constexpr int copies() const { return static_cast<int>(std::max({numbers.size(), texts.size(), std::size_t{1}})); }

    constexpr bool has(unsigned use) const { return (uses & use) != 0; }
};

namespace rows {

inline constexpr std::string_view general = "VELDOR_GENERAL", sound = "VELDOR_SOUND", graphics = "VELDOR_GRAPHICS",
                                  battle = "VELDOR_BATTLE", fonts = font_section, library = "system";

inline constexpr int any_min = std::numeric_limits<int>::min(), any_max = std::numeric_limits<int>::max();

constexpr SettingRow flag(std::string_view section, std::string_view key, unsigned uses, Place place,
                          std::string_view help) {
    return {section, key, SettingKind::flag, 0, "yes", 0, 1, uses, place, help};
}

constexpr SettingRow number(std::string_view section, std::string_view key, int standard, int min, int max,
                            unsigned uses, Place place, std::string_view help) {
    return {section, key, SettingKind::number, standard, {}, min, max, uses, place, help};
}

constexpr SettingRow text(std::string_view section, std::string_view key, std::string_view standard, int longest,
                          unsigned uses, Place place, std::string_view help) {
    return {section, key, SettingKind::text, 0, standard, 0, longest, uses, place, help};
}

constexpr SettingRow outside(Outside what, SettingRow row) {
    row.outside = what;
    return row;
}

constexpr SettingRow effects(std::string_view key, int module) {
    return number(sound, key, 8, 0, 10, offered, &settings.volumes[static_cast<std::size_t>(module)].effects,
                  "level of the sound effects, 0 off");
}

constexpr SettingRow music(std::string_view key, int module) {
    return number(sound, key, 3, 0, 10, offered, &settings.volumes[static_cast<std::size_t>(module)].music,
                  "level of the music, 0 off");
}

/// The range is that of the sound set-up's list; load_settings() clamps it to the themes that exist.
constexpr SettingRow theme(std::string_view key, int standard, int module) {
    return outside(Outside::kept, number(sound, key, standard, 0, 10, offered,
                                         &settings.theme[static_cast<std::size_t>(module)], "music theme"));
}

constexpr SettingRow loop(std::string_view key, int module) {
    return number(sound, key, 1, 0, 1, offered, &theme_loop[static_cast<std::size_t>(module)],
                  "1 all themes in turn, 0 the chosen one repeatedly");
}

inline constexpr std::array<std::string_view, font_count> font_names{"arial.ttf", "arial.ttf", "cour.ttf", "cour.ttf",
                                                                     "cour.ttf",  "cour.ttf",  "cour.ttf", "cour.ttf",
                                                                     "cour.ttf",  "cour.ttf",  "cour.ttf"};
inline constexpr std::array<int, font_count> font_heights{12, 13, 11, 11, 14, 12, 14, 16, 20, 20, 20};
inline constexpr std::array<int, font_count> font_spaces{1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0};

constexpr SettingRow numbered(SettingRow row, std::span<const int> numbers,
                              std::span<const std::string_view> texts = {}) {
    row.numbers = numbers;
    row.texts = texts;
    return row;
}

/// In the order in which settings are read and written.
inline constexpr auto all = std::to_array<SettingRow>({
    flag(general, "sound_at_all", on_its_own, {}, "no: the program uses no sound"),
    flag(general, "music_at_all", on_its_own, {}, "no: no music is played"),
    flag(general, "intro_at_all", on_its_own, {}, "no: no films at the start"),
    flag(general, "gamepad", on_its_own, {}, "no: gamepads are not looked for"),

    effects("vcc_snd_volume", cc_module),
    theme("vcc_theme", 2, cc_module),
    music("vcc_music_volume", cc_module),
    effects("hq_snd_volume", hq_module),
    music("hq_music_volume", hq_module),
    effects("factory_snd_volume", factory_module),
    music("factory_music_volume", factory_module),
    effects("battle_snd_volume", battle_module),
    music("battle_music_volume", battle_module),
    loop("vcc_theme_loop", cc_module),
    theme("hq_theme", 4, hq_module),
    loop("hq_theme_loop", hq_module),
    theme("factory_theme", 3, factory_module),
    loop("factory_theme_loop", factory_module),
    theme("battle_theme", 1, battle_module),
    loop("battle_theme_loop", battle_module),
    number(sound, "theme_fade_in", 0, 0, 1000, loaded, &theme_fade_in,
           "milliseconds in which a theme rises from silence when it begins; 0: at its full level at once"),
    number(sound, "number_of_themes", 0, 0, 11, saved, &number_of_themes,
           "number of music themes, 0 when music is off; written for the modules"),

    outside(Outside::signed_byte, number(graphics, "screen_mode", 0, any_min, any_max, offered, &settings.screen_mode,
                                         "0 window, 1 full screen")),
    number(graphics, "screen_mode_range", -1, -1, 3, on_its_own, {},
           "display modes of the machine: -1 not probed yet, 1 full screen, 2 window, 3 both"),
    number(graphics, "resolution", 3, 0, 4, kept, &settings.resolution,
           "0 320x200, 1 640x400, 2 640x480, 3 800x600, 4 1024x768; this program is always 800x600"),
    number(graphics, "bitmap_depth", 0, 0, 3, offered, &settings.bitmap_depth,
           "0 32 bit, 1 24 bit, 2 16 bit, 3 15 bit"),
    flag(graphics, "aa_at_all", loaded, &anti_aliased_text, "no: text edges are not smoothed"),
    number(graphics, "frame_rest", 0, 0, 100, loaded, &frame_rest,
           "longest sleep in milliseconds while nothing happens, which input ends; 0 only yields to other programs"),
    outside(Outside::standard,
            number(graphics, "display_scale", 0, 0, 2, on_its_own, {},
                   "size of the picture (X11): 0 always 800x600, 1 as large as window or monitor allow, "
                   "2 the same in whole steps; anything else counts as 0")),
    number(graphics, "window_width", 0, 0, 32767, on_its_own, {},
           "width of the window at the start, 0 as fits monitor and resolution; written at the end if display_scale is "
           "not 0, as are the next four"),
    number(graphics, "window_height", 0, 0, 32767, on_its_own, {}, "height of the window at the start"),
    number(graphics, "window_x", 0, 0, 32767, on_its_own, {}, "place of the window, if its size is known"),
    number(graphics, "window_y", 0, 0, 32767, on_its_own, {}, "place of the window, if its size is known"),
    number(graphics, "window_maximised", 0, 0, 1, on_its_own, {}, "1: the window starts maximised"),

    number(battle, "brontar_anim", 1, 0, 1, offered, &settings.brontar_anim, "animations of the brontars"),
    number(battle, "sprite_speed", 1, 0, 3, offered, &settings.sprite_speed, "speed of the animations"),
    number(battle, "message_delay", 1, 0, 3, offered, &settings.message_delay, "how long a message stays"),
    number(battle, "message_detail", 2, 0, 3, offered, &settings.message_detail, "how many messages are shown"),
    text(battle, "player_name", "Player1", field_text_limit, kept, &settings.player_name, "the player's name"),
    text(battle, "ip_address", ".", field_text_limit, kept, &settings.ip_address,
         "the player's network address, \".\" if there is none"),
    text(battle, "battle_hq_ip", "N/A", 15, on_its_own, {}, "address of the HQ; written at every start"),

    outside(Outside::standard, number(general, "keyboard", 0, 0, 5, offered, &settings.keyboard,
                                      "keyboard layout: 0 US, 1 German, 2 Finnish, 3 French, 4 Italian, 5 UK")),

    // Not used here; the battle module expects them.
    flag(battle, "ambient_at_all", ensured, {}, "for the battle module"),
    number(battle, "message_max", 1, any_min, any_max, ensured, {}, "for the battle module"),
    flag(battle, "3D_map", ensured, {}, "for the battle module"),
    text(battle, "2D_style", "new", any_max, ensured, {}, "for the battle module"),
    number(battle, "maxmap_x", 34, any_min, any_max, ensured, {}, "for the battle module"),
    number(battle, "maxmap_y", 34, any_min, any_max, ensured, {}, "for the battle module"),

    numbered(text(fonts, "font#_name", {}, any_max, on_its_own, {}, "file of a font in fonts/"), {}, font_names),
    numbered(number(fonts, "font#_height", 0, 1, 200, on_its_own, {}, "height of a font in pixels"), font_heights),
    numbered(number(fonts, "font#_space", 0, -20, 100, on_its_own, {}, "pixels added after every character of a font"),
             font_spaces),

    text(library, "keyboard", "", any_max, on_its_own, {},
         "mapping file of the keyboard layout; written from the setting above"),
});

constexpr bool are_valid() {
    for (std::size_t i = 0; i < all.size(); ++i) {
        const SettingRow& row = all[i];
        if (row.section.empty() || row.key.empty() || row.help.empty() || row.min > row.max)
            return false;
        if (row.kind == SettingKind::number && row.copies() == 1 && (row.number < row.min || row.number > row.max))
            return false;
        // What is loaded, saved or reset needs a place; a key only created must not have one.
        const bool has_place = !std::holds_alternative<std::monostate>(row.place);
        if (has_place != ((row.uses & offered) != 0) || (has_place && row.has(ensured)))
            return false;
        for (std::size_t j = 0; j < i; ++j)
            if (all[j].section == row.section && all[j].key == row.key)
                return false;
    }
    return true;
}
static_assert(are_valid(), "a key appears twice, or a row's range, default, place or help is missing");

} // namespace rows

/// Plays sound effects at a module's volume from now on.
void use_effects_volume(Module module);

void load_settings();
void reset_settings();
void save_settings();

} // namespace vcc
