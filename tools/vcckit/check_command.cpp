#include "check.h"
#include "commands.h"

#include "platform/files.h"

#include <algorithm>
#include <cstdio>

#include <unistd.h>

namespace vcc::kit {

namespace {

constexpr const char* clear_line = "\r\x1b[K";

} // namespace

int run_check(const std::string& folder, bool json) {
    const platform::FolderVisit visit(folder);
    if (!visit.entered()) {
        std::fprintf(stderr, "vcckit: %s is no folder\n", folder.c_str());
        return exit_unusable;
    }
    Faults faults;
    const bool progress = ::isatty(STDERR_FILENO) != 0;
    {
        const Library library;
        std::size_t done = 0;
        faults = check_installation([&](std::string_view subject) {
            if (progress)
                std::fprintf(stderr, "%s[%zu/%zu] %.*s", clear_line, ++done, checks().size(),
                             static_cast<int>(subject.size()), subject.data());
        });
    }
    if (progress)
        std::fputs(clear_line, stderr);
    if (json) {
        std::fputs(json_of_faults(faults, "installation", folder).c_str(), stdout);
    } else {
        const bool colours = ::isatty(STDOUT_FILENO) != 0;
        for (const Fault& fault : faults)
            std::printf("%s\n", text_of_fault(fault, colours).c_str());
        std::printf("%s: %s\n", folder.c_str(), sum_of(faults).c_str());
    }
    if (std::ranges::any_of(faults, &Fault::fatal))
        return exit_unusable;
    return faults.empty() ? exit_clean : exit_faults;
}

} // namespace vcc::kit
