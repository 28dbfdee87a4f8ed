// Text files in an encoding that the program does not read.
#include "vcckit/check/check.h"

#include "vcckit/text/latin1.h"

#include "core/installation.h"

#include <algorithm>

namespace vcc::kit {

namespace {

/// Settings are UTF-8, and so are the names of files.
bool may_be_utf8(const std::string& path) {
    return path == path::settings || path == path::buffer_list;
}

int first_line_beyond_ascii(std::string_view text) {
    const auto* const found = std::ranges::find_if(text, [](char c) { return c < 0; });
    return 1 + static_cast<int>(std::count(text.begin(), found, '\n'));
}

} // namespace

void check_encoding(Installation& installation, Faults& faults) {
    for (const auto& [path, text] : installation.text_files)
        if (text && !may_be_utf8(path) && is_utf8(*text) && std::ranges::any_of(*text, [](char c) { return c < 0; }))
            faults.push_back({FaultCode::text_utf8, path, first_line_beyond_ascii(*text), -1, "", "the file is UTF-8",
                              "save it as Windows Latin-1, or each letter beyond ASCII shows as two"});
}

} // namespace vcc::kit
