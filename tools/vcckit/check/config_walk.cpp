#include "vcckit/check/config_walk.h"

#include "core/lines.h"
#include "core/text.h"

#include <charconv>
#include <set>

namespace vcc::kit {

namespace {

constexpr std::size_t settings_line_limit = 4096;

std::string trimmed(std::string_view text) {
    std::string result = trim_left(text);
    trim_right(result);
    return result;
}

} // namespace

void walk_config(const std::string& file, std::string_view text, Faults& faults,
                 const std::function<void(const ConfigEntry&)>& take) {
    LineReader lines(text);
    std::string section;
    std::set<std::string> seen;
    while (const auto line = lines.next(settings_line_limit)) {
        const Reporter report{faults, file, lines.line_number()};
        const std::string entry = trimmed(*line);
        if (entry.empty() || entry[0] == '#' || entry[0] == ';')
            continue;
        if (entry[0] == '[' && entry.ends_with(']')) {
            section = entry.substr(1, entry.size() - 2);
            take({section, "", "", lines.line_number()});
            continue;
        }
        const std::size_t equals = entry.find('=');
        if (equals == std::string::npos || equals == 0) {
            report(FaultCode::settings_line, "", "neither a section nor key = value", "comments begin with #");
            continue;
        }
        const std::string key = trimmed(entry.substr(0, equals));
        if (!seen.insert(std::string(section).append("\n").append(key)).second)
            report(FaultCode::setting_twice, key, "is given twice", "the first one counts");
        take({section, key, trimmed(entry.substr(equals + 1)), lines.line_number()});
    }
}

std::optional<int> whole_number(std::string_view value) {
    int number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    return error == std::errc{} && end == value.data() + value.size() ? std::optional(number) : std::nullopt;
}

} // namespace vcc::kit
