// Sample module: the battle. It reads how long game messages stay.
#include "common/module_screen.h"
#include "veldor_module.h"

namespace {

std::string delay_name(int delay) {
    constexpr const char* names[] = {"short", "medium", "long", "maximum"};
    return delay >= 0 && delay < 4 ? names[delay] : "unknown";
}

} // namespace

uint8_t battle(uint8_t fullscreen, int32_t version) {
    return module::run(
        {.title = "BATTLE",
         .subtitle = "Where they meet",
         .picture = "images/battle.pcx",
         .lines = {{"Message delay", delay_name(module::number_setting("VELDOR_BATTLE", "message_delay", 1))},
                   {"Came in as", module::mode_name(fullscreen)},
                   {"Control centre", module::version_name(version)}},
         .mode_range = module::number_setting("VELDOR_GRAPHICS", "screen_mode_range", -1)},
        fullscreen);
}
