// One run of the program: start-up, then passes, each with a module after it, and the end.
#pragma once

#include "cc/screens.h"

#include <span>
#include <string>
#include <string_view>

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

/// Prepares the process, from the working folder to the fonts. False if the program cannot run; the reason has been
/// shown and logged.
bool start_up(Session& session);

/// Seven to fifteen characters, exactly three dots between the first and the last; nothing else is checked. Pure.
bool looks_like_ip_address(std::string_view text);

/// Starts reading the next pass's pictures during start-up; later passes do so in run_pass().
void read_pass_pictures_ahead();

/// Builds up what the screens need, runs them, and tears everything down again before a module runs. Sets pass_ok and,
/// if the screens ran, choice.
void run_pass(Session& session);

/// Calls the chosen module's entry and takes over the display state that it returns. Shows and logs a missing library
/// or entry. Does nothing for 45; logs any other number without a module and keeps it as the pending error.
void hand_off(Session& session);

/// Restores the display's switch behaviour and the pointer after a pass.
void restore_display();

/// Shuts the font and graphics libraries down.
void shut_down();

} // namespace vcc
