// Commands that the tool for Windows does not have.
#include "vcckit/commands/commands.h"

namespace vcc::kit {

int run_edit(const EditorRequest&) {
    return complain("the screen editor is not part of the tool for Windows");
}

int run_export(const ExportRequest&) {
    return complain("export is not part of the tool for Windows");
}

int run_play(const PlayRequest&) {
    return complain("this system has no virtual display");
}

} // namespace vcc::kit
