#include "platform/display.h"

#include <allegro.h>

namespace vcc::platform {

void take_display_events() {} // the library is woken by each event
void flush_display() {}       // drawing goes straight to the surface
void take_keyboard_focus() {} // a new full-screen window comes to the front with the keyboard

// The system puts accents together by itself.
ComposeList::ComposeList(const std::string&) {}
ComposeList::~ComposeList() = default;

const int full_screen_list_driver = GFX_DIRECTX_ACCEL;
const bool full_screen_is_centred = false;

} // namespace vcc::platform
