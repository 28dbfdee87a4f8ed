#include "settings/values.h"

#include "settings/config_file.h"

#include <allegro.h>

namespace vcc {

namespace {

/// For the library: a "#" in the key becomes the number of the copy.
struct KeyName {
    explicit KeyName(const SettingRow& row, int copy = 0, std::string_view suffix = {})
        : section(row.section), key(std::string(row.key).append(suffix)) {
        if (const std::size_t mark = key.find('#'); mark != std::string::npos)
            key.replace(mark, 1, std::to_string(copy));
    }
    std::string section, key;
};

} // namespace

bool read_flag(FlagKey name) {
    const auto [section, key] = KeyName(name.row());
    return config_flag(section.c_str(), key.c_str());
}

int read_number(NumberKey name, int copy, std::string_view suffix) {
    const SettingRow& row = name.row();
    const int value = stored_number(name, copy, suffix);
    switch (row.outside) {
    case Outside::nearest:
        return std::clamp(value, row.min, row.max);
    case Outside::standard:
        return value >= row.min && value <= row.max ? value : row.number;
    case Outside::signed_byte:
        return static_cast<std::int8_t>(value);
    case Outside::kept:
        break;
    }
    return value;
}

int stored_number(NumberKey name, int copy, std::string_view suffix) {
    const auto [section, key] = KeyName(name.row(), copy, suffix);
    return get_config_int(section.c_str(), key.c_str(), name.row().standard_number(copy));
}

std::string read_text(TextKey name, int copy) {
    const auto [section, key] = KeyName(name.row(), copy);
    return get_config_string(section.c_str(), key.c_str(), std::string(name.row().standard_text(copy)).c_str());
}

void write_number(NumberKey name, int value) {
    const auto [section, key] = KeyName(name.row());
    set_config_value(section, key, std::to_string(value));
}

void write_text(TextKey name, const std::string& value) {
    const auto [section, key] = KeyName(name.row());
    set_config_value(section, key, value);
}

void ensure(const SettingRow& row) {
    const auto [section, key] = KeyName(row);
    if (row.kind == SettingKind::number) {
        if (get_config_int(section.c_str(), key.c_str(), -1) == -1)
            write_number(row, row.number);
    } else if (get_config_string(section.c_str(), key.c_str(), nullptr) == nullptr) {
        write_text(row, std::string(row.text));
    }
}

} // namespace vcc
