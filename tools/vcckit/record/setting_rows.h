// The rows of the settings, found by the names of a file and told in a table.
#pragma once

#include "settings/settings.h"

#include <string>
#include <string_view>

namespace vcc::kit {

/// The row of a key of a configuration file, numbered keys and keys with "_default" appended included; null for an
/// unknown key. Ignores letter case.
const SettingRow* find_setting_row(std::string_view section, std::string_view key);

/// The tables of docs/settings.md, in Markdown.
std::string settings_table();

} // namespace vcc::kit
