#pragma once

#include <string>

namespace vcc::platform {

/// Names the gamepads that are plugged in now, empty if there is none: another text means that one has come or gone.
/// It is also the configuration in which the graphics library finds them. Takes some microseconds.
std::string gamepads();

} // namespace vcc::platform
