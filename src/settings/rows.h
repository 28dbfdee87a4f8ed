// One row for every key of the shared configuration file. Loading, saving, resetting, the check of an installation and
// the table in docs/settings.md all walk these rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace vcc {

enum class KeyKind {
    flag, ///< "yes" when the value begins with these three characters, or when the key is missing
    number,
    text
};

/// What becomes of a number outside its row's range when it is loaded or reset.
enum class Outside {
    nearest,  ///< the nearest end of the range
    standard, ///< the hard default
    kept      ///< it stays: the end of its range is not known before everything is read
};

/// What the settings store does with a key; keys without any of these belong to another owner.
enum class KeyUse : unsigned {
    load = 1,   ///< read into its place by load_settings()
    save = 2,   ///< written from its place by save_settings()
    reset = 4,  ///< read by reset_settings() from the key with "_default" appended
    ensure = 8, ///< created with its default by save_settings() when it is missing
};

constexpr unsigned operator|(KeyUse a, KeyUse b) {
    return static_cast<unsigned>(a) | static_cast<unsigned>(b);
}
constexpr unsigned operator|(unsigned a, KeyUse b) {
    return a | static_cast<unsigned>(b);
}

/// A zero-terminated character array of the settings.
struct TextPlace {
    char* text = nullptr;
    std::size_t size = 0; ///< bytes with the terminating zero
};

/// Where a value lives in memory; nothing for keys that the settings store does not hold.
using Place = std::variant<std::monostate, int*, std::int8_t*, TextPlace>;

struct SettingRow {
    std::string_view section;
    std::string_view key; ///< a "#" stands for the numbers 0 to copies - 1
    KeyKind kind = KeyKind::number;
    int number = 0;             ///< hard default of a number
    std::string_view text = {}; ///< hard default of a text or flag
    int min = 0, max = 0;       ///< range of a number that was read, both included; a text's longest length is max
    unsigned uses = 0;          ///< KeyUse values
    Place place = {};
    std::string_view help = {};
    int copies = 1;
    Outside outside = Outside::nearest;

    constexpr bool has(KeyUse use) const { return (uses & static_cast<unsigned>(use)) != 0; }
};

/// All rows, in the order in which the settings are read and written.
std::span<const SettingRow> setting_rows();

/// The row that a key of a configuration file belongs to (also for the numbered keys and for the keys with "_default"
/// appended); null for a key that nobody here knows. Letter case does not matter.
const SettingRow* find_setting_row(std::string_view section, std::string_view key);

/// The table of docs/settings.md, in Markdown.
std::string settings_table();

} // namespace vcc
