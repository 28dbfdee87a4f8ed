#include "settings/settings.h"

#include "core/text.h"
#include "settings/keyboard_layout.h"
#include "settings/values.h"
#include "sound/sound.h"

#include <allegro.h>

#include <algorithm>
#include <cstring>

namespace vcc {

namespace {

/// Section and key of a row for the library, with a "#" replaced by the number of the copy.
struct KeyName {
    explicit KeyName(const SettingRow& row, std::string_view suffix = {}, int copy = 0)
        : section(row.section), key(std::string(row.key).append(suffix)) {
        if (const std::size_t mark = key.find('#'); mark != std::string::npos)
            key.replace(mark, 1, std::to_string(copy));
    }
    std::string section, key;
};

int in_range(const SettingRow& row, int value) {
    if (row.outside == Outside::kept || (value >= row.min && value <= row.max))
        return value;
    return row.outside == Outside::standard ? row.number : std::clamp(value, row.min, row.max);
}

bool stored_flag(const SettingRow& row, std::string_view suffix = {}) {
    const KeyName name(row, suffix);
    return config_flag(name.section.c_str(), name.key.c_str());
}

std::string stored_text(const SettingRow& row, std::string_view suffix = {}, int copy = 0) {
    const KeyName name(row, suffix, copy);
    const std::string standard(row.standard_text(copy));
    return get_config_string(name.section.c_str(), name.key.c_str(), standard.c_str());
}

void store(const SettingRow& row, int value) {
    const KeyName name(row);
    set_config_int(name.section.c_str(), name.key.c_str(), value);
}

void store(const SettingRow& row, const std::string& value) {
    const KeyName name(row);
    set_config_string(name.section.c_str(), name.key.c_str(), value.c_str());
}

void read_row(const SettingRow& row, std::string_view suffix) {
    if (const TextPlace* const place = std::get_if<TextPlace>(&row.place)) {
        const std::string value = stored_text(row, suffix);
        std::memset(place->text, 0, place->size);
        std::memcpy(place->text, value.data(), std::min(value.size(), place->size - 1));
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

/// Creates a key that another program expects, unless it exists. A number of -1 counts as missing.
void ensure_row(const SettingRow& row) {
    const KeyName name(row);
    if (row.kind == SettingKind::number) {
        if (get_config_int(name.section.c_str(), name.key.c_str(), -1) == -1)
            store(row, row.number);
    } else if (get_config_string(name.section.c_str(), name.key.c_str(), nullptr) == nullptr) {
        store(row, std::string(row.text));
    }
}

template <typename Action>
void for_rows(KeyUse use, Action action) {
    for (const SettingRow& row : setting_rows())
        if (row.has(use))
            action(row);
}

/// The two flags can only switch sound and music off; only a new sound set-up switches them on.
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

bool read_flag(FlagKey name) {
    return stored_flag(name.row());
}

int read_number(NumberKey name, int copy) {
    return in_range(name.row(), stored_number(name.row(), {}, copy));
}

std::string read_text(TextKey name, int copy) {
    return stored_text(name.row(), {}, copy);
}

int stored_number(const SettingRow& row, std::string_view suffix, int copy) {
    const KeyName name(row, suffix, copy);
    return get_config_int(name.section.c_str(), name.key.c_str(), row.standard_number(copy));
}

void write_number(NumberKey name, int value) {
    store(name.row(), value);
}

void write_text(TextKey name, const std::string& value) {
    store(name.row(), value);
}

void load_settings() {
    obey_sound_flags();
    if (music_on != 0)
        music_on = count_themes();
    store_number_of_themes(music_on);
    for_rows(KeyUse::load, [](const SettingRow& row) { read_row(row, {}); });
    anti_aliased_text = settings.anti_aliased;
    clamp_themes();
}

void reset_settings() {
    obey_sound_flags();
    if (music_on != 0) {
        music_on = count_themes();
        store_number_of_themes(music_on);
    }
    for_rows(KeyUse::reset, [](const SettingRow& row) { read_row(row, "_default"); });
    clamp_themes();
}

void save_settings() {
    write_keyboard_layout();
    if (settings.ip_address[0] == '\0')
        store_text(settings.ip_address, ".");
    for_rows(KeyUse::save, write_row);
    write_keyboard_layout();
    // These reach the disk with the next flush.
    for_rows(KeyUse::ensure, ensure_row);
}

} // namespace vcc
