// The four background pictures that rotate while a pass is loading.
#pragma once

#include <string>
#include <vector>

namespace vcc {

extern int background_rotation; ///< steps taken since the program started

/// images\morv1.pcx to morv4.pcx.
std::vector<std::string> background_paths();

/// Loads them; returns 0, or the number (1 to 4) of the first picture that cannot be loaded.
int load_backgrounds();

/// Shows the next picture of the rotation on the screen, if it is loaded, and moves the rotation on.
void show_next_background();

/// Destroys the pictures.
void free_backgrounds();

} // namespace vcc
