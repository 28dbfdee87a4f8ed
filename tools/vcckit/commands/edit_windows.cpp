// The screen editor is not part of the tool for Windows.
#include "vcckit/commands/commands.h"

#include <cstdio>

namespace vcc::kit {

int run_edit(const EditorRequest&) {
    std::fprintf(stderr, "vcckit: the screen editor is not part of the tool for Windows\n");
    return exit_unusable;
}

} // namespace vcc::kit
