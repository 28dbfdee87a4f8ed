// Veldor's control centre: the program that the player starts.
#include "app/handoff.h"
#include "app/pass.h"
#include "app/startup.h"
#include "core/installation.h"
#include "sound/sound.h"

#include <initializer_list> // END_OF_MAIN needs nothing else on this platform, but the library's header does

#include <allegro.h>

namespace {

bool goes_on(const vcc::Session& session) {
    return session.pass_ok && session.choice != -1 && session.choice != vcc::leave_code;
}

} // namespace

int main(int argc, char* argv[]) {
    vcc::Session session;
    session.arguments = {argv, static_cast<std::size_t>(argc)};
    if (vcc::start_up(session)) {
        do {
            vcc::run_pass(session);
            vcc::hand_off(session);
            vcc::restore_display();
            vcc::music_on = 0;
        } while (goes_on(session));
    }
    vcc::shut_down();
    return 0;
}
END_OF_MAIN()
