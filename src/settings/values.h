// Single settings, read and written through their rows.
#pragma once

#include "settings/settings.h"

#include <string>
#include <string_view>

namespace vcc {

/// Names a row, by its key and, if the key stands in more than one section, that. What names no row of this kind, or
/// several, does not compile.
template <SettingKind kind>
class RowKey {
public:
    consteval RowKey(const char* name) : row_(&find({}, name)) {}
    consteval RowKey(std::string_view section, std::string_view name) : row_(&find(section, name)) {}
    RowKey(const SettingRow& row) : row_(&row) {} ///< of this kind

    const SettingRow& row() const { return *row_; }

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

// The value in the selected file, or its hard default. `copy` is the number for a "#" in the key; `suffix` is appended
// to the key.
bool read_flag(FlagKey name);
int read_number(NumberKey name, int copy = 0, std::string_view suffix = {});
int stored_number(NumberKey name, int copy = 0, std::string_view suffix = {}); ///< whatever the row's range
std::string read_text(TextKey name, int copy = 0);

// They reach the disk with the next flush_settings().
void write_number(NumberKey name, int value);
void write_text(TextKey name, const std::string& value);

/// Creates a key that another program expects, with its hard default, unless it exists. A number of -1 counts as
/// missing.
void ensure(const SettingRow& row);

} // namespace vcc
