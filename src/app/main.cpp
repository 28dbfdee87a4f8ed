// Veldor's control centre: the program that the player starts.
#include "app/session.h"
#include "sound/sound.h"

#include <allegro.h>

int main(int argc, char* argv[]) {
    vcc::Session session;
    if (vcc::start_up(session, {argv, static_cast<std::size_t>(argc)})) {
        std::optional<vcc::Module> module;
        do {
            module = vcc::run_pass(session);
            if (module)
                vcc::run_module(*module);
            vcc::restore_display();
            vcc::music_on = 0;
        } while (module);
    }
    vcc::shut_down();
    return 0;
}
END_OF_MAIN()
