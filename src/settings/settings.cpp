#include "settings/settings.h"

#include "core/text.h"
#include "settings/config_file.h"
#include "settings/keyboard_layout.h"
#include "settings/values.h"
#include "sound/sound.h"

#include <algorithm>

namespace vcc {

namespace {

void read_row(const SettingRow& row, std::string_view suffix) {
    if (const TextPlace* const place = std::get_if<TextPlace>(&row.place)) {
        const std::string value = stored_text(row, suffix).substr(0, place->size - 1);
        std::ranges::fill(std::ranges::copy(value, place->text).out, place->text + place->size, '\0');
    } else if (row.kind == SettingKind::flag) {
        *std::get<int*>(row.place) = stored_flag(row, suffix) ? 1 : 0;
    } else {
        const int value = in_range(row, stored_number(row, suffix));
        if (std::int8_t* const* const byte = std::get_if<std::int8_t*>(&row.place))
            **byte = static_cast<std::int8_t>(value); // 255 in the file is -1
        else
            *std::get<int*>(row.place) = value;
    }
}

void write_row(const SettingRow& row) {
    if (const TextPlace* const place = std::get_if<TextPlace>(&row.place))
        store(row, std::string(place->text));
    else if (std::int8_t* const* const byte = std::get_if<std::int8_t*>(&row.place))
        store(row, **byte);
    else
        store(row, *std::get<int*>(row.place));
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
    anti_aliased_text = settings.anti_aliased;
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
    if (settings.ip_address[0] == '\0')
        store_text(settings.ip_address, ".");
    for_rows(rows::saved, write_row);
    write_keyboard_layout();
    for_rows(rows::ensured, ensure); // after the flush: odd on purpose
}

} // namespace vcc
