#include "settings/values.h"

#include "settings/config_file.h"

#include <allegro.h>

namespace vcc {

namespace {

/// For the library: a "#" in the key becomes the number of the copy.
struct KeyName {
    explicit KeyName(const SettingRow& row, std::string_view suffix = {}, int copy = 0)
        : section(row.section), key(std::string(row.key).append(suffix)) {
        if (const std::size_t mark = key.find('#'); mark != std::string::npos)
            key.replace(mark, 1, std::to_string(copy));
    }
    std::string section, key;
};

} // namespace

bool stored_flag(const SettingRow& row, std::string_view suffix) {
    const KeyName name(row, suffix);
    return config_flag(name.section.c_str(), name.key.c_str());
}

int stored_number(const SettingRow& row, std::string_view suffix, int copy) {
    const KeyName name(row, suffix, copy);
    return get_config_int(name.section.c_str(), name.key.c_str(), row.standard_number(copy));
}

std::string stored_text(const SettingRow& row, std::string_view suffix, int copy) {
    const KeyName name(row, suffix, copy);
    const std::string standard(row.standard_text(copy));
    return get_config_string(name.section.c_str(), name.key.c_str(), standard.c_str());
}

int in_range(const SettingRow& row, int value) {
    if (row.outside == Outside::kept || (value >= row.min && value <= row.max))
        return value;
    return row.outside == Outside::standard ? row.number : std::clamp(value, row.min, row.max);
}

void store(const SettingRow& row, int value) {
    store(row, std::to_string(value));
}

void store(const SettingRow& row, const std::string& value) {
    const KeyName name(row);
    set_config_value(name.section, name.key, value);
}

void ensure(const SettingRow& row) {
    const KeyName name(row);
    if (row.kind == SettingKind::number) {
        if (get_config_int(name.section.c_str(), name.key.c_str(), -1) == -1)
            store(row, row.number);
    } else if (get_config_string(name.section.c_str(), name.key.c_str(), nullptr) == nullptr) {
        store(row, std::string(row.text));
    }
}

} // namespace vcc
