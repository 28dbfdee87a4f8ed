// Loading a whole installation without a display, for a pass of the program, vcckit and the benchmarks. The working
// folder must be the installation, its settings the library's configuration, and a colour depth must be set.
#pragma once

#include "screen/slot.h"

#include <allegro.h>

#include <optional>

namespace vcc {

/// Once per process: the prefixes and messages of a language (1, 2), or of the one that the language file names.
void load_language_files(std::optional<int> number = {});

// What a pass loads, in this order. False after a failure; only without sound a pass goes on.

/// Loads the sounds of the set-up file. Sound that is switched off is no failure.
bool load_sounds();

/// Loads font sizes, slot sets, settings and what follows from them: field texts, volumes, the theme, the keyboard's
/// mapping file.
bool load_screens();

/// Loads the text windows of the language.
bool load_windows();

/// Loads the pictures of the buffer list. Without one for the screens to draw on, that is a failure.
bool load_pictures();

void fill_fields();

/// Copies the background picture to the buffers that text windows restore it from. Call before the screens run and
/// after loading the graphic buffers again.
void prepare_background_copies();

/// Keeps the set's background, to be restored under smoothed text.
void keep_text_background(const SlotSet& set);

/// Loads the pictures again after a change of the colour depth, installs the pointer again and shows the options screen
/// on the new screen picture. False after a failure, which is shown and logged; `target` is then null.
bool reload_pictures(BITMAP*& target);

} // namespace vcc
