// Loading a whole installation, without a display: for a pass of the program, for vcckit and for the benchmarks. The
// working folder is the installation, its settings are the library's configuration, and the library has a colour depth.
#pragma once

#include <allegro.h>

#include <functional>
#include <optional>

namespace vcc {

/// Once in a process: the prefixes and messages of a language; without a number (1, 2) that of the language file.
void load_language_files(std::optional<int> number = {});

/// Once in a process: the fonts. False after a failure, which is logged.
bool load_font_files();

enum class LoadFailure {
    sound,   ///< the load goes on without it
    screens, ///< the slot sets
    windows, ///< the window file of the language
    pictures ///< the buffer list, a picture of it, or a screen picture that is missing or small
};

struct LoadHooks {
    std::function<void(LoadFailure)> failed; ///< called as it happens
    std::function<void()> before_pictures;   ///< settings, sound and screens are there; may be empty
};

/// What a pass needs: sound, screens and pictures, in this order. False when a part without which there are no screens
/// failed.
bool load_installation(const LoadHooks& hooks);

// The parts of it, for whoever draws many pictures of an installation and keeps what has not changed.

/// The sounds that the set-up file names. False when it cannot be carried out; sound that is switched off is no
/// failure.
bool load_sounds();

/// Font sizes, slot sets, settings with what follows from them (field texts, volumes, the theme, the keyboard's mapping
/// file), and text windows.
bool load_screens(const LoadHooks& hooks);

/// The pictures of the buffer list. False without one for the screens to draw on.
bool load_pictures();

/// Copies the texts of the settings into the entry fields of the options screen.
void fill_fields();

/// Copies the background picture to where text windows restore theirs from, and points the windows there: before the
/// screens run, and whenever the graphic buffers have been loaded again.
void prepare_background_copies();

/// Loads the pictures again after a change of the colour depth, installs the pointer again and shows the options screen
/// on the new screen picture. False when they cannot be loaded, which is shown and logged; `target` is then null.
bool reload_pictures(BITMAP*& target);

} // namespace vcc
