// The screen editor is not part of the tool for Windows.
#include "vcckit/commands/commands.h"

namespace vcc::kit {

int run_edit(const EditorRequest&) {
    return complain("the screen editor is not part of the tool for Windows");
}

} // namespace vcc::kit
