#include "vcckit/record/setting_rows.h"

#include "platform/latin1.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace vcc::kit {

using platform::same_but_for_case;

namespace {

bool names_row(const SettingRow& row, std::string_view key) {
    const std::size_t mark = row.key.find('#');
    if (mark == std::string_view::npos)
        return same_but_for_case(row.key, key);
    for (int copy = 0; copy < row.copies(); ++copy)
        if (same_but_for_case(std::string(row.key).replace(mark, 1, std::to_string(copy)), key))
            return true;
    return false;
}

std::string default_column(const SettingRow& row) {
    std::string list;
    for (int copy = 0; copy < row.copies(); ++copy)
        list += (copy == 0 ? "" : ", ") + (row.kind == SettingKind::number ? std::to_string(row.standard_number(copy))
                                                                           : std::string(row.standard_text(copy)));
    return list;
}

std::string values_column(const SettingRow& row) {
    constexpr int unlimited = std::numeric_limits<int>::max();
    if (row.kind == SettingKind::flag)
        return "yes, no";
    if (row.max == unlimited)
        return "any";
    if (row.kind == SettingKind::text)
        return "at most " + std::to_string(row.max) + " characters";
    return std::to_string(row.min) + " to " + std::to_string(row.max);
}

} // namespace

const SettingRow* find_setting_row(std::string_view section, std::string_view key) {
    for (const SettingRow& row : rows::all)
        if (same_but_for_case(row.section, section) &&
            (names_row(row, key) ||
             (row.has(rows::reset) && same_but_for_case(std::string(row.key) + "_default", key))))
            return &row;
    return nullptr;
}

std::string settings_table() {
    std::vector<std::string_view> sections;
    for (const SettingRow& row : rows::all)
        if (std::ranges::find(sections, row.section) == sections.end())
            sections.push_back(row.section);

    std::string table;
    for (const std::string_view section : sections) {
        table += (table.empty() ? "## `[" : "\n## `[") + std::string(section) + "]`\n\n";
        table += "| Key | Default | Values | Reset value | Meaning |\n|---|---|---|---|---|\n";
        for (const SettingRow& row : rows::all)
            if (row.section == section)
                table += "| `" + std::string(row.key) + "` | " + default_column(row) + " | " + values_column(row) +
                         " | " + (row.has(rows::reset) ? "`" + std::string(row.key) + "_default`" : std::string()) +
                         " | " + std::string(row.help) + " |\n";
    }
    return table;
}

} // namespace vcc::kit
