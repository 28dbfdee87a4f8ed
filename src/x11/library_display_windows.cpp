#include "x11/library_display.h"

namespace vcc::platform {

void tend_library_windows() {}

} // namespace vcc::platform
