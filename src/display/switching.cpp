#include "display/switching.h"

#include "core/alert.h"
#include "core/window_state.h"
#include "display/graphics_mode.h"
#include "x11/display.h"

#include <allegro.h>

namespace vcc {

namespace {

void register_callback(int direction, void (*callback)(), const char* failure) {
    if (set_display_switch_callback(direction, callback) == -1)
        alert_and_log(failure);
}

void on_switch_in() {
    switched_out = 0;
    platform::end_wait();
}
void on_switch_out() {
    switched_out = 1;
    platform::end_wait();
}

} // namespace

void install_display_switching() {
    // The mode comes first, because setting it removes the callbacks. Not every driver supports SWITCH_BACKAMNESIA: on
    // X11 the screen keeps its contents.
    const bool full = fullscreen == full_screen;
    if (!full || set_display_switch_mode(SWITCH_BACKAMNESIA) != 0)
        set_display_switch_mode(SWITCH_BACKGROUND);
    register_callback(SWITCH_IN, on_switch_in, "Could not install SWITCH_IN callback");
    register_callback(SWITCH_OUT, on_switch_out, "Could not install SWITCH_OUT callback");
}

void request_close() {
    close_requested = 1;
    simulate_ukeypress(27, KEY_ESC);
}

void install_close_button() {
    set_close_button_callback(request_close);
}

} // namespace vcc
