// Prepares the process once per run, from the working folder to the fonts.
#pragma once

#include "cc/screens.h"

#include <span>
#include <string>

namespace vcc {

/// What start-up finds out for the passes.
struct Session {
    std::span<char* const> arguments;         ///< the first one is the program
    bool intro_on = true;                     ///< the settings ask for the intro films
    bool films_played = false;                ///< in this run
    std::string pending_error;                ///< logged again by every clean-up; at most 255 characters, never cleared
    ModuleChoice choice = ModuleChoice::none; ///< of the latest pass
    bool pass_ok = true;                      ///< the latest pass loaded all that it needs
};

/// Whether the player chose a module, which another pass follows.
inline bool goes_on(const Session& session) {
    return session.pass_ok && session.choice != ModuleChoice::none && session.choice != ModuleChoice::leave;
}

/// False if the program cannot run; the reason has been shown and logged.
bool start_up(Session& session);

/// Shuts the font and graphics libraries down.
void shut_down();

} // namespace vcc
