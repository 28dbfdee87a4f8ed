#include "check.h"
#include "commands.h"
#include "silence.h"
#include "watch.h"

#include "platform/files.h"

#include <algorithm>
#include <cstdio>

#include <unistd.h>

namespace vcc::kit {

namespace {

constexpr const char* clear_line = "\r\x1b[K";

/// A comment in the line above silences a fault in a text file.
bool is_silenced_there(const Fault& fault, Installation& files) {
    if (fault.line == 0)
        return false;
    const auto& text = files.text_file(fault.file);
    Faults unknown;
    return text && is_silenced(fault, silences_of(*text, unknown));
}

int check_once(const CheckRequest& request, const std::set<FaultCode>& ignored) {
    const platform::FolderVisit visit(request.folder);
    if (!visit.entered()) {
        std::fprintf(stderr, "vcckit: %s is not a folder\n", request.folder.c_str());
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
    Installation files;
    std::erase_if(faults,
                  [&](const Fault& fault) { return ignored.contains(fault.code) || is_silenced_there(fault, files); });
    if (request.json) {
        std::fputs(json_of_faults(faults, "installation", request.folder).c_str(), stdout);
    } else {
        const bool colours = ::isatty(STDOUT_FILENO) != 0;
        for (const Fault& fault : faults)
            std::printf("%s\n", text_of_fault(fault, colours).c_str());
        std::printf("%s: %s\n", request.folder.c_str(), sum_of(faults).c_str());
    }
    if (std::ranges::any_of(faults, &Fault::fatal))
        return exit_unusable;
    return faults.empty() ? exit_clean : exit_faults;
}

} // namespace

int run_check(const CheckRequest& request) {
    std::set<FaultCode> ignored;
    if (const std::string unknown = take_codes(request.ignored, ignored); !unknown.empty()) {
        std::fprintf(stderr, "vcckit: --ignore: there is no fault %s; \"vcckit explain\" lists the codes\n",
                     unknown.c_str());
        return exit_unusable;
    }
    if (!request.watch)
        return check_once(request, ignored);
    watch({request.folder}, [&] { check_once(request, ignored); });
}

} // namespace vcc::kit
