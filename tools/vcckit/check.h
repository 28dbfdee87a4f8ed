// Checking a whole installation.
#pragma once

#include "installation.h"

#include <functional>
#include <span>
#include <string_view>

namespace vcc::kit {

struct Check {
    std::string_view subject; ///< for the progress line
    void (*run)(Installation&, Faults&);
};

/// Every check, readers first: what they read is what the others look at.
std::span<const Check> checks();

/// Runs all checks on the working folder. `progress` is told each subject before it begins.
Faults check_installation(const std::function<void(std::string_view subject)>& progress);

// Parts of the checks, for one screen. An empty installation leaves out what concerns other files.
void check_records_of(const Installation& installation, const LanguageFiles& language, const ScreenFiles& screen,
                      Faults& faults);
void check_overlaps_of(const ScreenFiles& screen, Faults& faults);
/// The fault is told of the second language.
void check_translation_of(const ScreenFiles& first, const ScreenFiles& other, Faults& faults);

// The checks that look at several files together.
void check_program_files(Installation& installation, Faults& faults);
void check_records(Installation& installation, Faults& faults);
void check_fixed_slots(Installation& installation, Faults& faults);
void check_values(Installation& installation, Faults& faults);
void check_overlaps(Installation& installation, Faults& faults);
void check_help(Installation& installation, Faults& faults);
void check_program_texts(Installation& installation, Faults& faults);
void check_screen_texts(Installation& installation, Faults& faults);
void check_languages(Installation& installation, Faults& faults);
void check_unread(Installation& installation, Faults& faults); ///< last: it knows what the others have read

/// What the lines of a help file say by themselves.
void check_help_text(const std::string& path, std::string_view text, Faults& faults);

} // namespace vcc::kit
