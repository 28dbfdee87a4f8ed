// Sample module: the battle. It reads who fights, and how long game messages stay.
#include "common/module_screen.h"
#include "veldor_module.h"

#include <iterator>

namespace {

constexpr module::Text delay_names[] = {
    {"brief", "kurz"}, {"steady", "mittel"}, {"long", "lang"}, {"as long as it takes", "so lange wie nötig"}};

std::string delay_name(int delay) {
    const bool known = delay >= 0 && delay < static_cast<int>(std::size(delay_names));
    return module::in_language(known ? delay_names[delay] : module::Text{"unknown", "unbekannt"});
}

} // namespace

uint8_t battle(uint8_t fullscreen, int32_t version) {
    return module::run(
        {.title = {"BATTLE", "SCHLACHT"},
         .subtitle = {"Where they meet", "Hier treffen sie aufeinander"},
         .orders = {{{"Break their line at the burnt mill.", "Durchbrecht ihre Linie an der Brandmühle."},
                     {"Keep the guns above the water.", "Haltet die Rohre über Wasser."},
                     {"No machine is left behind.", "Keine Maschine bleibt zurück."}}},
         .picture = "images/battle.pcx",
         .lines = {{{"Commander", "Kommandant"}, module::setting("VELDOR_BATTLE", "player_name", "Player1")},
                   {{"Dispatches", "Meldungen"},
                    delay_name(module::number_setting("VELDOR_BATTLE", "message_delay", 1))}},
         .version = version,
         .mode_range = module::number_setting("VELDOR_GRAPHICS", "screen_mode_range", -1)},
        fullscreen);
}
