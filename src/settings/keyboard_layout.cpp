#include "settings/keyboard_layout.h"

#include "core/installation.h"
#include "settings/config_file.h"
#include "settings/settings.h"
#include "settings/values.h"
#include "x11/display.h"

#include <allegro.h>

#include <string>

namespace vcc {

std::string_view keyboard_mapping_file(int keyboard) {
    const bool known = keyboard >= 0 && keyboard < static_cast<int>(path::keyboards.size());
    return path::keyboards[known ? static_cast<std::size_t>(keyboard) : 0];
}

void start_keyboard() {
    platform::install_keyboard_with(path::accents);
}

void write_keyboard_layout() {
    write_text({rows::library, "keyboard"}, std::string(keyboard_mapping_file(settings.keyboard)));
    flush_settings();
}

void apply_keyboard_layout() {
    write_keyboard_layout();
    remove_keyboard();
    start_keyboard();
}

} // namespace vcc
