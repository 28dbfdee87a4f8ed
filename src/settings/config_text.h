// Changing single values in the text of a configuration file, so that everything else in it stays as it was written.
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
    std::optional<std::string> value; ///< nothing: the key is taken out
};

/// What turns `before` into `after`, ordered by section and key. Pure.
std::vector<ConfigChange> changes_between(const ConfigValues& before, const ConfigValues& after);

/// The text with the changes made. A key is found without regard to letter case, its first line counts; a new key goes
/// to the end of its section, a new section to the end of the text. A value ends at its first line break, because the
/// rest of it would be read as lines of its own. Other lines keep every byte. Pure.
std::string apply_changes(std::string_view text, std::span<const ConfigChange> changes);

/// The text with an empty line before every section that follows one without any. The graphics library puts a new key
/// where the first empty line after its section's name is; without one the key ends up in the next section that has
/// one, and is never found again. Pure.
std::string with_sections_apart(std::string_view text);

} // namespace vcc
