#include "platform/graphics_drivers.h"

#include <allegro.h>

namespace vcc::platform {

const int full_screen_list_driver = GFX_XWINDOWS_FULLSCREEN;
const bool full_screen_is_centred = true;

} // namespace vcc::platform
