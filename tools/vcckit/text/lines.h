// The lines of a text.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// With their line feeds; the last one may have none. Pure.
inline std::vector<std::string_view> lines_with_ends(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        lines.push_back(text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1));
        text.remove_prefix(lines.back().size());
    }
    return lines;
}

/// Without their line feeds; a line feed at the end begins no line. Pure.
inline std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines = lines_with_ends(text);
    for (std::string_view& line : lines)
        line = line.substr(0, line.find('\n'));
    return lines;
}

} // namespace vcc::kit
