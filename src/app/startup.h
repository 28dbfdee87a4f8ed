// Preparing the process: from the working folder to the fonts, once per run.
#pragma once

#include "core/installation.h"

#include <span>
#include <string>

namespace vcc {

/// What start-up found out and the passes need.
struct Session {
    std::span<char* const> arguments; ///< the first one is the program
    bool intro_on = true;             ///< the intro films are wanted
    bool films_played = false;        ///< they have been shown in this run
    std::string pending_error;        ///< message that every clean-up logs again; at most 255 characters, never emptied
    ModuleChoice choice = ModuleChoice::none; ///< of the latest pass
    bool pass_ok = true;                      ///< the latest pass loaded everything that it needs
};

/// Whether a module was chosen, to be entered now and followed by another pass.
inline bool goes_on(const Session& session) {
    return session.pass_ok && session.choice != ModuleChoice::none && session.choice != ModuleChoice::leave;
}

/// Runs the start-up steps in order; false when one of them ends the program (it has told and logged why).
bool start_up(Session& session);

/// Shuts the font and graphics libraries down.
void shut_down();

/// A version as players read it: 128 is 1.2.8.
std::string version_string(int number);

} // namespace vcc
