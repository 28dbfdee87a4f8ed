// Single settings, read and written through their rows.
#pragma once

#include "settings/rows.h"

#include <string>
#include <string_view>

namespace vcc {

/// A row, named by its key. A key without a row of this kind does not compile.
template <SettingKind kind>
class RowKey {
public:
    consteval RowKey(const char* name) : row_(&find(name)) {}

    constexpr const SettingRow& row() const { return *row_; }

private:
    static consteval const SettingRow& find(std::string_view name) {
        for (const SettingRow& row : rows::all)
            if (row.kind == kind && row.key == name)
                return row;
        throw "no row of this kind has the key";
    }

    const SettingRow* row_;
};
using FlagKey = RowKey<SettingKind::flag>;
using NumberKey = RowKey<SettingKind::number>;
using TextKey = RowKey<SettingKind::text>;

// The value in the selected file, or the row's hard default. `copy` is the number for a "#" in the key.
bool read_flag(FlagKey name);
int read_number(NumberKey name, int copy = 0); ///< brought into the row's range
std::string read_text(TextKey name, int copy = 0);

/// The number in the file, not brought into the row's range; `suffix` is appended to the key.
int stored_number(const SettingRow& row, std::string_view suffix = {}, int copy = 0);
inline int stored_number(NumberKey name) {
    return stored_number(name.row());
}

/// The hard default.
constexpr int standard_number(NumberKey name, int copy = 0) {
    return name.row().standard_number(copy);
}

// They reach the disk with the next flush_settings().
void write_number(NumberKey name, int value);
void write_text(TextKey name, const std::string& value);

} // namespace vcc
