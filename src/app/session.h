// One run of the program: start-up, then passes, each with a module after it, and the end.
#pragma once

#include "core/installation.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vcc {

/// What the passes of a run share.
struct Session {
    bool films_played = false; ///< or they are not wanted
    std::string pending_error; ///< logged again by every clean-up; at most 255 characters, never cleared
};

/// Prepares the process, from the working folder to the fonts; the first of the arguments is the program. False if it
/// cannot run; the reason has been shown and logged.
bool start_up(Session& session, std::span<char* const> arguments);

/// Seven to fifteen characters, exactly three dots between the first and the last; nothing else is checked. Pure.
bool looks_like_ip_address(std::string_view text);

/// Starts reading the first pass's pictures during start-up; run_pass() does so for the pass that follows.
void read_pass_pictures_ahead();

/// Builds up what the screens need, runs them, and tears everything down again. Returns the module that the player has
/// chosen and that another pass follows; nothing if the player leaves or the screens cannot be loaded.
std::optional<Module> run_pass(Session& session);

/// Calls the module's entry and takes over the display state that it returns. Shows and logs a missing library or
/// entry.
void run_module(Module module);

/// Restores the display's switch behaviour and the pointer after a pass.
void restore_display();

/// Shuts the font and graphics libraries down.
void shut_down();

} // namespace vcc
