#include "platform/terminal.h"

#include <unistd.h>

namespace vcc::platform {

bool is_terminal(std::FILE* stream) {
    return ::isatty(::fileno(stream)) == 1;
}

} // namespace vcc::platform
