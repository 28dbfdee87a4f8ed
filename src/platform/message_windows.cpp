#include "platform/message.h"

namespace vcc::platform {

bool show_message(const std::string&) {
    return false; // the library's box belongs to the system
}

} // namespace vcc::platform
