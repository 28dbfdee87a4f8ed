// Checking a whole installation.
#pragma once

#include "vcckit/check/installation.h"

#include <functional>
#include <span>
#include <string_view>

namespace vcc::kit {

struct Check {
    std::string_view subject; ///< for the progress line
    void (*run)(Installation&, Faults&);
};

/// All checks; the readers come first, because the others check what they read.
std::span<const Check> checks();

/// Runs all checks on the working folder, and names the lines of the sources that lie beside it. Calls `progress` with
/// each subject before it begins.
Faults check_installation(Installation& installation, const std::function<void(std::string_view subject)>& progress);

/// Moves faults of packed records to the lines of the sources that describe them: those in "screens" in the working
/// folder or beside it. Drops what such a source says on purpose.
void trace_to_sources(const Installation& installation, Faults& faults);

// Parts of the checks, for one screen. An empty installation skips what concerns other files.
void check_records_of(const Installation& installation, const LanguageFiles& language, const ScreenFiles& screen,
                      Faults& faults);
void check_overlaps_of(const ScreenFiles& screen, Faults& faults);
/// Reports faults for the second language.
void check_translation_of(const ScreenFiles& first, const ScreenFiles& other, Faults& faults);

// Checks of several files together.
void check_program_files(Installation& installation, Faults& faults);
void check_records(Installation& installation, Faults& faults);
void check_fixed_slots(Installation& installation, Faults& faults);
void check_values(Installation& installation, Faults& faults);
void check_overlaps(Installation& installation, Faults& faults);
void check_help(Installation& installation, Faults& faults);
void check_program_texts(Installation& installation, Faults& faults);
void check_screen_texts(Installation& installation, Faults& faults);
void check_languages(Installation& installation, Faults& faults);
void check_encoding(Installation& installation, Faults& faults); ///< after all that read texts
void check_unread(Installation& installation, Faults& faults);   ///< last, because it needs what the others have read

} // namespace vcc::kit
