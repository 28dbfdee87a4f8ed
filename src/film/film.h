#pragma once

#include <string>

namespace vcc {

inline constexpr int no_effect = -1;

/// Plays an AVI film centred on the screen, with a sound effect (or no_effect), until it ends or the player presses a
/// key or mouse button. Failures are logged.
void play_film(const std::string& path, int effect);

} // namespace vcc
