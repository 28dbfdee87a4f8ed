#include "platform/display_events.h"

namespace vcc::platform {

// The library is woken by each event.
void take_display_events() {}

} // namespace vcc::platform
