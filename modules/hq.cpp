// Sample module: the headquarters. It reads the player's name.
#include "common/module_screen.h"
#include "veldor_module.h"

uint8_t hq(uint8_t fullscreen, int32_t version) {
    return module::run({.title = "HEADQUARTERS",
                        .subtitle = "Where campaigns begin",
                        .picture = "images/hq.pcx",
                        .lines = {{"Commander", module::setting("VELDOR_BATTLE", "player_name", "Player1")},
                                  {"Came in as", module::mode_name(fullscreen)},
                                  {"Control centre", module::version_name(version)}},
                        .mode_range = module::number_setting("VELDOR_GRAPHICS", "screen_mode_range", -1)},
                       fullscreen);
}
