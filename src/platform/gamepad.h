#pragma once

#include <string>

namespace vcc::platform {

/// Names the gamepads plugged in; empty without one. A different text means that one has come or gone. It is also the
/// configuration that leads the graphics library to them. Takes a few microseconds.
std::string gamepads();

} // namespace vcc::platform
