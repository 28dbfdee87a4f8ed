#include "settings/rows.h"

#include "settings/settings.h"

#include <array>
#include <limits>

namespace vcc {

namespace {

constexpr std::string_view general = "VELDOR_GENERAL", sound = "VELDOR_SOUND", graphics = "VELDOR_GRAPHICS",
                           battle = "VELDOR_BATTLE", fonts = "VELDOR_VCC", library = "system";

constexpr unsigned other_owner = 0;
constexpr unsigned kept = KeyUse::load | KeyUse::save;
constexpr unsigned offered = kept | KeyUse::reset;
constexpr unsigned loaded = static_cast<unsigned>(KeyUse::load);
constexpr unsigned saved = static_cast<unsigned>(KeyUse::save);
constexpr unsigned ensured = static_cast<unsigned>(KeyUse::ensure);

constexpr int any_min = std::numeric_limits<int>::min(), any_max = std::numeric_limits<int>::max();

constexpr SettingRow flag(std::string_view section, std::string_view key, unsigned uses, std::string_view help) {
    return {section, key, KeyKind::flag, 0, "yes", 0, 1, uses, {}, help};
}

constexpr SettingRow number(std::string_view section, std::string_view key, int standard, int min, int max,
                            unsigned uses, Place place, std::string_view help) {
    return {section, key, KeyKind::number, standard, {}, min, max, uses, place, help};
}

constexpr SettingRow text(std::string_view section, std::string_view key, std::string_view standard, int longest,
                          unsigned uses, Place place, std::string_view help) {
    return {section, key, KeyKind::text, 0, standard, 0, longest, uses, place, help};
}

constexpr SettingRow effects(std::string_view key, int module) {
    return number(sound, key, 8, 0, 10, offered, &settings.volumes[static_cast<std::size_t>(module)].effects,
                  "level of the sound effects, 0 off");
}

constexpr SettingRow music(std::string_view key, int module) {
    return number(sound, key, 3, 0, 10, offered, &settings.volumes[static_cast<std::size_t>(module)].music,
                  "level of the music, 0 off");
}

/// The upper end is that of the sound set-up's list; load_settings() narrows it to the themes that there are.
constexpr SettingRow theme(std::string_view key, int standard, int module) {
    SettingRow row =
        number(sound, key, standard, 0, 10, offered, &settings.theme[static_cast<std::size_t>(module)], "music theme");
    row.outside = Outside::kept;
    return row;
}

constexpr SettingRow loop(std::string_view key, int module) {
    return number(sound, key, 1, 0, 1, offered, &theme_loop[static_cast<std::size_t>(module)],
                  "1 all themes one after another, 0 the chosen one again and again");
}

constexpr SettingRow numbered(std::string_view key, KeyKind kind, std::string_view standards, int min, int max,
                              std::string_view help) {
    return {fonts, key, kind, 0, standards, min, max, other_owner, {}, help, 11};
}

constexpr auto rows = std::to_array<SettingRow>({
    flag(general, "sound_at_all", other_owner, "no: the program uses no sound"),
    flag(general, "music_at_all", other_owner, "no: no music is played"),
    flag(general, "intro_at_all", other_owner, "no: no films at the start"),

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
    number(sound, "number_of_themes", 0, 0, 11, saved, &number_of_themes,
           "number of music themes, 0 when music is off; written for the modules"),

    // Kept as a signed byte, whatever it is: everything but 0 means full screen.
    number(graphics, "screen_mode", 0, any_min, any_max, offered, &settings.screen_mode, "0 window, 1 full screen"),
    number(graphics, "screen_mode_range", -1, -1, 3, other_owner, {},
           "what the machine can show: -1 not tried yet, 1 full screen, 2 window, 3 both"),
    number(graphics, "resolution", 3, 0, 4, kept, &settings.resolution,
           "0 320x200, 1 640x400, 2 640x480, 3 800x600, 4 1024x768; shown only"),
    number(graphics, "bitmap_depth", 0, 0, 3, offered, &settings.bitmap_depth,
           "0 32 bit, 1 24 bit, 2 16 bit, 3 15 bit"),
    {graphics, "aa_at_all", KeyKind::flag, 0, "yes", 0, 1, loaded, &settings.anti_aliased,
     "no: the edges of texts are not smoothed"},
    number(graphics, "frame_rest", 0, 0, 20, loaded, &frame_rest,
           "milliseconds given up in every frame without input; 0 lets other programs run, no more"),
    number(graphics, "display_scale", 0, 0, 2, other_owner, {},
           "size of the picture (X11): 0 always 800x600, 1 as large as window or monitor allow, 2 the same in whole "
           "steps; anything else counts as 0"),

    number(battle, "brontar_anim", 1, 0, 1, offered, &settings.brontar_anim, "animations of the brontars"),
    number(battle, "sprite_speed", 1, 0, 3, offered, &settings.sprite_speed, "speed of the animations"),
    number(battle, "message_delay", 1, 0, 3, offered, &settings.message_delay, "how long a message stays"),
    number(battle, "message_detail", 2, 0, 3, offered, &settings.message_detail, "how many messages are shown"),
    text(battle, "player_name", "Player1", 15, kept, TextPlace{settings.player_name, sizeof settings.player_name},
         "the player's name"),
    text(battle, "ip_address", ".", 15, kept, TextPlace{settings.ip_address, sizeof settings.ip_address},
         "the player's network address, \".\" when there is none"),
    text(battle, "battle_hq_ip", "N/A", 15, other_owner, {}, "address of the HQ; written at every start"),

    {general,
     "keyboard",
     KeyKind::number,
     0,
     {},
     0,
     5,
     offered,
     &settings.keyboard,
     "keyboard layout: 0 US, 1 German, 2 Finnish, 3 French, 4 Italian, 5 UK",
     1,
     Outside::standard},

    // Not used here: the battle module expects to find them.
    flag(battle, "ambient_at_all", ensured, "for the battle module"),
    number(battle, "message_max", 1, any_min, any_max, ensured, {}, "for the battle module"),
    flag(battle, "3D_map", ensured, "for the battle module"),
    text(battle, "2D_style", "new", any_max, ensured, {}, "for the battle module"),
    number(battle, "maxmap_x", 34, any_min, any_max, ensured, {}, "for the battle module"),
    number(battle, "maxmap_y", 34, any_min, any_max, ensured, {}, "for the battle module"),

    numbered("font#_name", KeyKind::text, "0 and 1 arial.ttf, others cour.ttf", 0, any_max, "file of a font in fonts/"),
    numbered("font#_height", KeyKind::number, "12, 13, 11, 11, 14, 12, 14, 16, 20, 20, 20", 1, 200,
             "height of a font in pixels"),
    numbered("font#_space", KeyKind::number, "0 and 6: 1, others 0", -20, 100,
             "pixels added after every character of a font"),

    text(library, "keyboard", "", any_max, other_owner, {},
         "mapping file of the keyboard layout; written from the setting above"),
});

constexpr bool rows_are_sound() {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const SettingRow& row = rows[i];
        if (row.section.empty() || row.key.empty() || row.help.empty() || row.min > row.max || row.copies < 1)
            return false;
        if (row.kind == KeyKind::number && row.copies == 1 && (row.number < row.min || row.number > row.max))
            return false;
        // A value that is loaded, saved or reset needs a place, and a key that is created must not have one.
        const bool has_place = !std::holds_alternative<std::monostate>(row.place);
        if (has_place != ((row.uses & offered) != 0) || (has_place && row.has(KeyUse::ensure)))
            return false;
        for (std::size_t j = 0; j < i; ++j)
            if (rows[j].section == row.section && rows[j].key == row.key)
                return false;
    }
    return true;
}
static_assert(rows_are_sound(), "a key appears twice, or a row's range, default, place or help is missing");

} // namespace

std::span<const SettingRow> setting_rows() {
    return rows;
}

} // namespace vcc
