// Zips are made on Linux, for Windows, too.
#include "vcckit/commands/commands.h"

#include <cstdio>

namespace vcc::kit {

int run_export(const ExportRequest&) {
    std::fprintf(stderr, "vcckit: export is not part of the tool for Windows\n");
    return exit_unusable;
}

} // namespace vcc::kit
