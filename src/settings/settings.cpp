#include "settings/settings.h"

#include "settings/config_file.h"
#include "settings/keyboard_layout.h"
#include "settings/values.h"
#include "sound/sound.h"

#include <algorithm>

namespace vcc {

namespace {

void read_row(const SettingRow& row, std::string_view suffix) {
    if (std::string* const* const place = std::get_if<std::string*>(&row.place))
        **place = read_text(row).substr(0, static_cast<std::size_t>(row.max));
    else
        *std::get<int*>(row.place) = row.kind == SettingKind::flag ? read_flag(row) : read_number(row, 0, suffix);
}

void write_row(const SettingRow& row) {
    if (std::string* const* const place = std::get_if<std::string*>(&row.place))
        write_text(row, **place);
    else
        write_number(row, *std::get<int*>(row.place));
}

template <typename Action>
void for_rows(unsigned use, Action action) {
    for (const SettingRow& row : rows::all)
        if (row.has(use))
            action(row);
}

/// These flags only switch off; it takes a new sound set-up to switch on.
void obey_sound_flags() {
    if (!read_flag("sound_at_all"))
        disable_sound();
    if (!read_flag("music_at_all"))
        music_on = 0;
}

void store_number_of_themes(int count) {
    number_of_themes = count;
    write_number("number_of_themes", number_of_themes);
    flush_settings();
}

/// Without themes the choices stay, so that one run without music does not reset them.
void clamp_themes() {
    if (number_of_themes > 0)
        for (int& theme : settings.theme)
            theme = std::clamp(theme, 0, number_of_themes - 1);
}

} // namespace

void use_effects_volume(Module module) {
    sfx_volume = settings.volumes[index_of(module)].effects * volume_step;
}

void load_settings() {
    obey_sound_flags();
    if (music_on != 0)
        music_on = count_themes();
    store_number_of_themes(music_on);
    for_rows(rows::loaded, [](const SettingRow& row) { read_row(row, {}); });
    clamp_themes();
}

void reset_settings() {
    obey_sound_flags();
    if (music_on != 0) {
        music_on = count_themes();
        store_number_of_themes(music_on);
    }
    for_rows(rows::reset, [](const SettingRow& row) { read_row(row, "_default"); });
    clamp_themes();
}

void save_settings() {
    write_keyboard_layout(); // before and after: odd on purpose
    if (settings.ip_address.empty())
        settings.ip_address = ".";
    for_rows(rows::saved, write_row);
    write_keyboard_layout();
    for_rows(rows::ensured, ensure); // after the flush: odd on purpose
}

} // namespace vcc
