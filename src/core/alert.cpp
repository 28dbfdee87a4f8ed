#include "core/alert.h"

#include "core/gamepad.h"
#include "core/log.h"
#include "core/mouse_buttons.h"
#include "core/window_state.h"
#include "platform/desktop.h"

#include <allegro.h>

#include <string>

namespace vcc {

namespace {

constexpr int confirm_key = 'C';

/// The box would draw the line feed that ends some log messages as a glyph.
std::string without_line_end(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of("\r\n") + 1));
}

} // namespace

void show_alert(std::string_view line1, std::string_view line2, std::string_view line3) {
    if (gfx_driver == nullptr || close_requested)
        return;
    const std::string lines[3] = {without_line_end(line1), without_line_end(line2), without_line_end(line3)};
    const auto shown = [](const std::string& line) { return line.empty() ? nullptr : line.c_str(); };
    poll_gamepads(); // the box itself listens to the first of them
    alert(shown(lines[0]), shown(lines[1]), shown(lines[2]), "OK", nullptr, confirm_key, 0);
    forget_mouse_buttons(); // those were for the box
    forget_gamepads();
}

void alert_and_log(std::string_view shown, std::string_view logged) {
    show_alert(shown);
    write_log(logged);
}

void show_message_box(std::string_view text) {
    if (!platform::show_message(std::string(text)))
        allegro_message("%s\n", std::string(text).c_str());
}

} // namespace vcc
