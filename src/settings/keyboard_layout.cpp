#include "settings/keyboard_layout.h"

#include "core/installation.h"
#include "settings/config_file.h"
#include "settings/settings.h"
#include "settings/values.h"
#include "x11/display.h"

#include <allegro.h>

#include <string>

namespace vcc {

void start_keyboard() {
    platform::install_keyboard_with(path::accents);
}

void write_keyboard_layout() {
    const auto keyboard = static_cast<std::size_t>(settings.keyboard);
    write_text({rows::library, "keyboard"}, std::string(path::keyboards[keyboard]));
    flush_settings();
}

void apply_keyboard_layout() {
    write_keyboard_layout();
    remove_keyboard();
    start_keyboard();
}

} // namespace vcc
