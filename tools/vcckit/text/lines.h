// The lines of a text.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// Without their line feeds; a line feed at the end begins no line. Pure.
inline std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace vcc::kit
