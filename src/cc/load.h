// Loading a whole installation without a display, for a pass of the program, vcckit and the benchmarks. The working
// folder must be the installation, its settings the library's configuration, and a colour depth must be set.
#pragma once

#include "screen/slot.h"

#include <allegro.h>

#include <functional>
#include <optional>

namespace vcc {

/// Once per process: the prefixes and messages of a language (1, 2), or of the one that the language file names.
void load_language_files(std::optional<int> number = {});

enum class LoadFailure {
    sound,    ///< loading continues without it
    screens,  ///< the slot sets
    windows,  ///< the window file of the language
    pictures, ///< the buffer list, one of its pictures, or a missing or too small screen picture
    count     ///< no failure: how many there are
};

struct LoadHooks {
    std::function<void(LoadFailure)> failed; ///< called at once
    std::function<void()> before_pictures;   ///< called after settings, sound and screens are loaded; may be empty
};

/// Loads what a pass needs: sound, screens and pictures, in this order. False if anything but sound failed.
bool load_installation(const LoadHooks& hooks);

// Its parts, so that drawing many pictures of an installation need not load everything each time.

/// Loads the sounds of the set-up file. False if that fails; sound that is switched off is no failure.
bool load_sounds();

/// Loads font sizes, slot sets, settings and what follows from them (field texts, volumes, the theme, the keyboard's
/// mapping file), and text windows. False after a failure.
bool load_screens(const LoadHooks& hooks);

/// Loads the pictures of the buffer list. False after a failure, or without a picture for the screens to draw on.
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
