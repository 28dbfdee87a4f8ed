#include "platform/scaled_display.h"

namespace vcc::platform {

std::string show_scaled(Fit) {
    return "on Windows there is no other";
}
std::string scaled_display_trouble() {
    return {};
}
void show_scaled_drawing() {}
bool full_screen_is_managed() {
    return false;
}

} // namespace vcc::platform
