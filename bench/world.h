// A copy of the built installation, loaded without a display: what the program holds when its menu stands.
#pragma once

#include "core/handles.h"

#include <allegro.h>

namespace vcc::bench {

/// Enters a scratch copy of the installation that VELDOR_INSTALLATION names (without it, the one built beside this
/// program), starts the library without a display at 32 bits, and loads what a pass loads. A memory bitmap stands in
/// for the display. Null, or the reason why it cannot.
const char* enter_world();

/// Removes the scratch copy.
void leave_world();

/// The picture that screens are drawn on.
BITMAP* target();

/// Colour depth of the world, bits.
inline constexpr int depth = 32;

} // namespace vcc::bench
