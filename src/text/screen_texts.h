// The texts that the program itself writes on its screens. They are English; an installation may translate each of them
// in a file.
#pragma once

#include "core/installation.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vcc {

/// Numbers of texts, 0 to 299 as the files have it. The options state those of their labels.
namespace screen_text_number {
inline constexpr int themes = 100, loop_all = 120, loop_one = 121, no_help = 122, no_help_file = 123,
                     manual_headline = 130, manual_no_memory = 131, manual_missing = 132, manual_locked = 133,
                     manual_no_reader = 134, manual_no_reader_2 = 135, hints = 140, explanations = 150;
} // namespace screen_text_number

/// Pairs of texts: what a slot says, and what it says while a gamepad is used.
inline constexpr int hint_pairs = 3;

inline constexpr int explanation_lines = info_slot::line_count;

/// Number of the first line of explanation k, 0 to 11.
constexpr int explanation_number(int k) {
    return screen_text_number::explanations + explanation_lines * k;
}

inline constexpr std::size_t screen_text_length = 89; ///< characters; longer translations are cut

/// One translated text of a file.
struct Translation {
    int line;   ///< of the file, from 1
    int number; ///< as the file gives it, not checked
    std::string text;
};

/// The texts of a file in the form of a message file; of several lines after one number only the last counts. Pure.
std::vector<Translation> read_translations(std::string_view file);

/// Replaces all translations by those of a file; without that file the texts are English. Logs unknown numbers and cut
/// texts.
void load_screen_texts(const std::string& path);

/// A text as the player reads it; empty for an unknown number. Valid until translations are loaded again.
std::string_view screen_text(int number);

bool is_screen_text(int number);

/// A text with the value, as two digits, in place of its "%2.2d".
std::string numbered_screen_text(int number, int value);

} // namespace vcc
