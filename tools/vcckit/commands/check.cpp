#include "vcckit/check/check.h"
#include "vcckit/commands/commands.h"
#include "vcckit/faults/silence.h"
#include "vcckit/files/watch.h"

#include "platform/files.h"

#include <algorithm>
#include <cstdio>

namespace vcc::kit {

namespace {

constexpr const char* clear_line = "\r\x1b[K";

/// A comment in the line above silences a fault in a text file.
bool is_silenced_there(const Fault& fault, const Installation& files) {
    if (fault.line == 0)
        return false;
    const auto& text = files.text_file(fault.file);
    Faults unknown;
    return text && is_silenced(fault, silences_of(*text, unknown));
}

int check_once(const CheckRequest& request, const std::set<FaultCode>& ignored) {
    const platform::FolderVisit visit(request.folder);
    if (!visit.entered())
        return complain(request.folder + " is not a folder");
    const bool progress = is_terminal(stderr);
    const Library library;
    Installation files;
    std::size_t done = 0;
    Faults faults = check_installation(files, [&](std::string_view subject) {
        if (progress)
            std::fprintf(stderr, "%s[%zu/%zu] %.*s", clear_line, ++done, checks().size(),
                         static_cast<int>(subject.size()), subject.data());
    });
    if (progress)
        std::fputs(clear_line, stderr);
    std::erase_if(faults,
                  [&](const Fault& fault) { return ignored.contains(fault.code) || is_silenced_there(fault, files); });
    const bool colours = wants_colours(stdout);
    std::string told;
    for (Fault& fault : faults) {
        const std::string source = fault.file;
        if (fault.column > 0) // of a source beside the installation: its name as seen from here
            fault.file =
                with_slashes(platform::name_of((platform::system_path(request.folder) / source).lexically_normal()));
        told += text_of_fault(fault, colours) + "\n";
        if (fault.column > 0)
            told += excerpt_of_fault(fault, *files.text_file(source), colours);
    }
    if (request.json)
        told = json_of_faults(faults, "installation", request.folder);
    else
        told += request.folder + ": " + sum_of(faults) + "\n";
    std::fputs(told.c_str(), stdout);
    if (std::ranges::any_of(faults, &Fault::fatal))
        return exit_unusable;
    return faults.empty() ? exit_clean : exit_faults;
}

} // namespace

int run_check(const CheckRequest& request) {
    const auto ignored = codes_of(request.ignored);
    if (!ignored)
        return complain(ignored.reason());
    return run_work(request.watch, {request.folder}, [&] { return check_once(request, *ignored); });
}

} // namespace vcc::kit
