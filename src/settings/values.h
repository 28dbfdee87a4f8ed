// Single settings, read and written through their rows.
#pragma once

#include "settings/settings.h"

#include <string>
#include <string_view>

namespace vcc {

// The value of a row in the selected file, or its hard default. `suffix` is appended to the key; `copy` is the number
// for a "#" in it.
bool stored_flag(const SettingRow& row, std::string_view suffix = {});
int stored_number(const SettingRow& row, std::string_view suffix = {}, int copy = 0); ///< whatever the row's range
std::string stored_text(const SettingRow& row, std::string_view suffix = {}, int copy = 0);

/// The number, or what replaces it if it is outside the row's range.
int in_range(const SettingRow& row, int value);

// They reach the disk with the next flush_settings().
void store(const SettingRow& row, int value);
void store(const SettingRow& row, const std::string& value);

/// Creates a key that another program expects, with its hard default, unless it exists. A number of -1 counts as
/// missing.
void ensure(const SettingRow& row);

/// Names a row by its key, and by its section if the key stands in more than one. What names no row of this kind, or
/// several, does not compile.
template <SettingKind kind>
class RowKey {
public:
    consteval RowKey(const char* name) : row_(&find({}, name)) {}
    consteval RowKey(std::string_view section, std::string_view name) : row_(&find(section, name)) {}

    constexpr const SettingRow& row() const { return *row_; }

private:
    static consteval const SettingRow& find(std::string_view section, std::string_view name) {
        const auto named = [&](const SettingRow& row) {
            return row.key == name && (section.empty() || row.section == section);
        };
        const auto row = std::ranges::find_if(rows::all, named);
        if (std::ranges::count_if(rows::all, named) != 1 || row->kind != kind)
            throw "no row of this kind has the key, or several have it";
        return *row;
    }

    const SettingRow* row_;
};
using FlagKey = RowKey<SettingKind::flag>;
using NumberKey = RowKey<SettingKind::number>;
using TextKey = RowKey<SettingKind::text>;

inline bool read_flag(FlagKey name) {
    return stored_flag(name.row());
}
inline int read_number(NumberKey name, int copy = 0) {
    return in_range(name.row(), stored_number(name.row(), {}, copy));
}
inline std::string read_text(TextKey name, int copy = 0) {
    return stored_text(name.row(), {}, copy);
}
inline int stored_number(NumberKey name) {
    return stored_number(name.row());
}
/// The hard default.
constexpr int standard_number(NumberKey name, int copy = 0) {
    return name.row().standard_number(copy);
}
inline void write_number(NumberKey name, int value) {
    store(name.row(), value);
}
inline void write_text(TextKey name, const std::string& value) {
    store(name.row(), value);
}

} // namespace vcc
