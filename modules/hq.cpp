// Sample module: the headquarters. It reads the player's name.
#include "common/module_screen.h"
#include "veldor_module.h"

uint8_t hq(uint8_t fullscreen, int32_t version) {
    return module::run(
        {.title = {"HEADQUARTERS", "HAUPTQUARTIER"},
         .subtitle = {"Where campaigns begin", "Hier beginnen Feldzüge"},
         .orders = {{{"Hold the ridge at Karst Gate until dawn.", "Haltet den Kamm am Karsttor bis zum Morgen."},
                     {"Keep two lances ready on the north road.", "Zwei Züge stehen bereit an der Nordstraße."},
                     {"Report as soon as the fog lifts.", "Meldung, sobald sich der Nebel hebt."}}},
         .picture = "images/hq.pcx",
         .lines = {{{"Commander", "Kommandant"}, module::setting("VELDOR_BATTLE", "player_name", "Player1")}},
         .version = version,
         .mode_range = module::number_setting("VELDOR_GRAPHICS", "screen_mode_range", -1)},
        fullscreen);
}
