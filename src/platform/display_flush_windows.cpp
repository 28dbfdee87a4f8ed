#include "platform/display_flush.h"

namespace vcc::platform {

// Drawing goes straight to the surface.
void flush_display() {}

} // namespace vcc::platform
