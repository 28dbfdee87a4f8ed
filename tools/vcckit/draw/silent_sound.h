// A silent sound driver: the program then shows the same as on a machine with sound.
#pragma once

namespace vcc::kit {

/// Installs it in place of the current sound system; the graphics library must be running.
void install_silent_sound();

} // namespace vcc::kit
