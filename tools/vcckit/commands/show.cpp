#include "vcckit/commands/commands.h"

#include "core/files.h"
#include "vcckit/check/installation.h"
#include "vcckit/commands/show_file.h"

#include <cstdio>

namespace vcc::kit {

int run_show(const std::string& file) {
    constexpr std::size_t shown_limit = 512u << 20;
    const Library library;
    const auto bytes = read_file(file, shown_limit);
    std::string fault = bytes ? "" : "cannot be read";
    const std::string text = bytes ? shown_file(file, *bytes, fault) : "";
    if (!fault.empty())
        return complain(file + " " + fault);
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() ? exit_clean : exit_unusable;
}

} // namespace vcc::kit
