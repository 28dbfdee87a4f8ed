// The four background pictures that rotate while a pass loads.
#pragma once

namespace vcc {

inline int background_rotation = 0; ///< pictures shown since the program started

/// Loads them; returns 0, or the number (1 to 4) of the first that cannot be loaded.
int load_backgrounds();

/// Shows the next picture of the rotation, if it is loaded, and advances the rotation.
void show_next_background();

void free_backgrounds();

} // namespace vcc
