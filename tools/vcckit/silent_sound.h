// A sound card of the tool's own that plays nothing: the program then shows what it shows on a machine with sound.
#pragma once

namespace vcc::kit {

/// Installs it in the place of the sound system that there is; the graphics library must be running.
void install_silent_sound();

} // namespace vcc::kit
