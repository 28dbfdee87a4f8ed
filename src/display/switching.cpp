#include "display/switching.h"

#include "core/alert.h"
#include "core/log.h"
#include "display/graphics_mode.h"
#include "platform/display.h"

#include <allegro.h>

namespace vcc {

std::atomic<int> switched_out = 0;
std::atomic<int> close_requested = 0;

namespace {

void register_callback(int direction, void (*callback)(), const char* failure) {
    if (set_display_switch_callback(direction, callback) != -1)
        return;
    show_alert(failure);
    write_log(failure);
}

} // namespace

void on_switch_in() {
    switched_out = 0;
}

void on_switch_out() {
    switched_out = 1;
}

void install_display_switching() {
    // The mode comes first: setting it makes the library forget its callbacks. Not every driver knows a screen that
    // loses its contents (X11 does not); such a screen simply keeps them.
    const bool full = fullscreen == full_screen;
    if (!full || set_display_switch_mode(SWITCH_BACKAMNESIA) != 0)
        set_display_switch_mode(SWITCH_BACKGROUND);
    register_callback(SWITCH_IN, on_switch_in, "Could not install SWITCH_IN callback");
    register_callback(SWITCH_OUT, on_switch_out, "Could not install SWITCH_OUT callback");
    if (full)
        platform::take_keyboard_focus();
}

void request_close() {
    close_requested = 1;
    simulate_ukeypress(27, KEY_ESC);
}

void install_close_button() {
    set_close_button_callback(request_close);
}

} // namespace vcc
