#include "x11/display.h"

#include <allegro.h>
#include <allegro/internal/aintern.h>
#include <winalleg.h>

namespace vcc::platform {

namespace {

const HANDLE wake_event = CreateEventW(nullptr, FALSE, FALSE, nullptr);

int refuse_sprite(BITMAP*, int, int) {
    return -1;
}

} // namespace

void end_with_display(void (*)()) {} // no display server

// Sprites are refused, the system's own cursors are not: a module may ask for one. In full screen the library has no
// functions for them, but calls them. The list ends with an empty row. Icon and name come with the
// program's file.
void prepare_window() {
    const GFX_DRIVER* window = nullptr;
    for (const _DRIVER_INFO* row = _gfx_driver_list; row->driver; ++row)
        if (row->id == GFX_DIRECTX_WIN)
            window = static_cast<const GFX_DRIVER*>(row->driver);
    for (const _DRIVER_INFO* row = _gfx_driver_list; row->driver; ++row) {
        auto* const driver = static_cast<GFX_DRIVER*>(row->driver);
        driver->set_mouse_sprite = refuse_sprite;
        if (!window || driver->hide_mouse)
            continue;
        driver->show_mouse = window->show_mouse;
        driver->hide_mouse = window->hide_mouse;
        driver->move_mouse = window->move_mouse;
    }
}

int start_library() {
    return allegro_init();
}

void take_display_events() {} // the library is woken by each event

void wait_for_input(int longest_ms) {
    WaitForSingleObject(wake_event, static_cast<DWORD>(longest_ms));
}

void wake_late_at_rest(int) {}

void end_wait() {
    SetEvent(wake_event);
}

// Drawing goes straight to the surface. Wine shows what was drawn last only when a thread asks for messages; elsewhere
// this takes a microsecond.
void flush_display() {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 0, 0);
}

void install_keyboard_with(const std::string&) {
    install_keyboard(); // the system puts accents together by itself
}

std::string show_scaled(Fit fit, const WindowPlace&) {
    return fit == Fit::none ? "" : "on Windows there is no other";
}
std::string scaled_display_trouble() {
    return {};
}
std::optional<WindowPlace> window_place() {
    return {};
}
std::optional<bool> shown_in_full_screen() {
    return {};
}

const int full_screen_list_driver = GFX_DIRECTX_ACCEL;
const bool full_screen_is_centred = false;

} // namespace vcc::platform
