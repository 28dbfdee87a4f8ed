// Veldor's control centre: the program that the player starts.
#include "app/session.h"
#include "sound/sound.h"

#include <allegro.h>

int main(int argc, char* argv[]) {
    vcc::Session session;
    session.arguments = {argv, static_cast<std::size_t>(argc)};
    if (vcc::start_up(session)) {
        do {
            vcc::run_pass(session);
            vcc::hand_off(session);
            vcc::restore_display();
            vcc::music_on = 0;
        } while (vcc::goes_on(session));
    }
    vcc::shut_down();
    return 0;
}
END_OF_MAIN()
