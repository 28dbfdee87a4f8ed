// Zips are made on Linux, for Windows, too.
#include "vcckit/commands/commands.h"

namespace vcc::kit {

int run_export(const ExportRequest&) {
    return complain("export is not part of the tool for Windows");
}

} // namespace vcc::kit
