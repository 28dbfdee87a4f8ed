// Changes single values in the text of a configuration file and leaves everything else as it was written.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vcc {

/// (section without brackets, key) -> value
using ConfigValues = std::map<std::pair<std::string, std::string>, std::string>;

struct ConfigChange {
    std::string section, key;
    std::optional<std::string> value; ///< nothing: the key is removed
};

/// The changes that turn `before` into `after`, ordered by section and key. Pure.
std::vector<ConfigChange> changes_between(const ConfigValues& before, const ConfigValues& after);

/// Applies the changes to the text. Keys are found without regard to letter case, and their first line counts; a new
/// key goes to the end of its section, a new section to the end of the text. A value is cut at its first line break,
/// because the rest would be read as further lines. Other lines keep every byte. Pure.
std::string apply_changes(std::string_view text, std::span<const ConfigChange> changes);

/// The text with an empty line at the end of every section that has none. The graphics library inserts a new key at the
/// first empty line after the section's name; without one the key would land in a later section and never be found
/// again. Pure.
std::string with_sections_apart(std::string_view text);

} // namespace vcc
