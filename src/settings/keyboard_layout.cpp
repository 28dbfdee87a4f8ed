#include "settings/keyboard_layout.h"

#include "platform/display.h"
#include "settings/settings.h"

#include <allegro.h>

#include <array>
#include <string>

namespace vcc {

namespace {

constexpr std::array<std::string_view, 6> mapping_files = {
    "data/configs/us.cfg", "data/configs/de.cfg", "data/configs/fi.cfg",
    "data/configs/fr.cfg", "data/configs/it.cfg", "data/configs/uk.cfg",
};

} // namespace

std::string_view keyboard_mapping_file(int keyboard) {
    const bool known = keyboard >= 0 && keyboard < static_cast<int>(mapping_files.size());
    return mapping_files[known ? static_cast<std::size_t>(keyboard) : 0];
}

void start_keyboard() {
    const platform::ComposeList list("data/compose");
    install_keyboard();
}

void write_keyboard_layout() {
    set_config_string("system", "keyboard", std::string(keyboard_mapping_file(settings.keyboard)).c_str());
    flush_settings();
}

void apply_keyboard_layout() {
    write_keyboard_layout();
    remove_keyboard();
    start_keyboard();
}

} // namespace vcc
