// What the system's full-screen driver of the graphics library is called, and what it can do.
#pragma once

namespace vcc::platform {

/// The driver whose list names the full-screen modes (a GFX_ constant of this system).
extern const int full_screen_list_driver;

/// True when that driver shows a picture smaller than the mode centred on black: every listed mode that is large enough
/// then stands for the picture's own size.
extern const bool full_screen_is_centred;

} // namespace vcc::platform
