// A whole installation in memory, read from the working folder with the program's own readers, without a display.
#pragma once

#include "vcckit/faults/report.h"
#include "vcckit/source/screen_source.h"

#include "core/handles.h"
#include "core/result.h"
#include "screen/slot.h"
#include "screen/text_window.h"

#include <array>
#include <bitset>
#include <map>
#include <set>
#include <string>

namespace vcc::kit {

/// Runs the graphics library without a driver in an installation's folder; releases the fonts at the end.
class Library {
public:
    /// `depth` in bits: 15, 16, 24 or 32.
    explicit Library(int depth = 32);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
};

struct ScreenFiles {
    ScreenKind kind = ScreenKind::menu;
    std::string slot_file, toggle_file;
    SlotSet set;               ///< empty if the file is unusable
    bool toggles_lost = false; ///< the toggle file is unusable, which is reported once, not per slot
};

struct LanguageFiles {
    std::array<ScreenFiles, screen_files.size()> screens;
    std::string window_file, message_file;
    std::array<TextWindow, text_window_count> windows;
    std::bitset<text_window_count> windows_described;
    bool windows_usable = false; ///< the window file could be read
    std::set<int> messages;      ///< indices that the message file names
};

struct Installation {
    std::array<LanguageFiles, languages.size()> by_language;
    std::map<int, BitmapPtr> buffers;                              ///< pictures of the buffer list
    std::set<int> sounds;                                          ///< entries that the sound set-up names a file for
    std::map<int, std::string> themes;                             ///< theme number from 0, name that players see
    std::set<std::string> named;                                   ///< files named by lists and settings, except texts
    bool listed_buffers = false;                                   ///< the buffer list could be read
    bool listed_sounds = false;                                    ///< the sound set-up could be read
    bool fonts = false;                                            ///< all eleven fonts are loaded and have their sizes
    mutable std::map<std::string, Result<std::string>> text_files; ///< what text_file() has read

    /// The bytes of a text file, read once.
    const Result<std::string>& text_file(const std::string& path) const;
};

inline const ScreenFiles& screen_of(const LanguageFiles& language, ScreenKind kind) {
    return language.screens[static_cast<std::size_t>(kind)];
}

/// A slot of a screen; null if it has none of this number.
inline const Slot* find_slot(const ScreenFiles& screen, int index) {
    return screen.set.has_slot(index) ? &screen.set.slots[static_cast<std::size_t>(index)] : nullptr;
}

/// A text window that is described; null without one.
inline const TextWindow* find_window(const LanguageFiles& language, int number) {
    const auto at = static_cast<std::size_t>(number);
    return number >= 0 && number < text_window_count && language.windows_described[at] ? &language.windows[at]
                                                                                       : nullptr;
}

/// Loads settings and fonts of the working folder without reports; false if the fonts cannot be loaded.
bool load_measuring_fonts();

// Readers; each reports the faults of its own files.
void read_settings(Installation& installation, Faults& faults);
void read_fonts(Installation& installation, Faults& faults);
void read_buffers(Installation& installation, Faults& faults);
void read_sounds(Installation& installation, Faults& faults);
void read_windows(Installation& installation, Faults& faults);
void read_messages(Installation& installation, Faults& faults);
void read_screens(Installation& installation, Faults& faults);

} // namespace vcc::kit
