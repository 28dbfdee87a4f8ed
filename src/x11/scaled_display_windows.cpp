#include "x11/scaled_display.h"

namespace vcc::platform {

std::string show_scaled(Fit, const WindowPlace&) {
    return "on Windows there is no other";
}
std::string scaled_display_trouble() {
    return {};
}
void show_scaled_drawing() {}
std::optional<WindowPlace> window_place() {
    return {};
}
std::optional<bool> shown_in_full_screen() {
    return {};
}

} // namespace vcc::platform
