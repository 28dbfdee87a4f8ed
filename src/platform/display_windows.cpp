#include "platform/display.h"

#include <allegro.h>
#include <allegro/internal/aintern.h>
#include <winalleg.h>

namespace vcc::platform {

void end_with_display(void (*)()) {} // no display server

// The list ends with an empty row.
void keep_pointer_in_picture() {
    for (const _DRIVER_INFO* row = _gfx_driver_list; row->driver; ++row) {
        auto* const driver = static_cast<GFX_DRIVER*>(row->driver);
        driver->set_mouse_sprite = nullptr;
        driver->show_mouse = nullptr;
        driver->hide_mouse = nullptr;
        driver->move_mouse = nullptr;
    }
}

void take_display_events() {} // the library is woken by each event

// Drawing goes straight to the surface. Wine shows what was drawn last only when a thread asks for messages; elsewhere
// this takes a microsecond.
void flush_display() {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 0, 0);
}

void take_keyboard_focus() {} // a new full-screen window comes to the front with the keyboard

// The system puts accents together by itself.
ComposeList::ComposeList(const std::string&) {}
ComposeList::~ComposeList() = default;

const int full_screen_list_driver = GFX_DIRECTX_ACCEL;
const bool full_screen_is_centred = false;

} // namespace vcc::platform
