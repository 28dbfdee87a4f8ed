// The texts that the program writes on its screens by itself, and their translations. They are English; a file of the
// installation may replace each of them in its language.
#pragma once

#include "core/result.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vcc {

struct ScreenText {
    int number;             ///< 0 to 299, as the files have it
    std::string_view fixed; ///< empty: a line that is empty in English, or a name that another file gives
};

/// Every text that can be replaced, in the order of its number.
std::span<const ScreenText> screen_text_table();

/// Numbers of the table; a group's texts follow one another.
namespace screen_text_number {
inline constexpr int volumes = 0, screen_mode = 20, resolution = 30, depth = 40, animations = 50, sprite_speed = 60,
                     message_delay = 70, message_detail = 80, keyboard = 90, themes = 100, loop_all = 120,
                     loop_one = 121, no_help = 122, no_help_file = 123, manual_headline = 130, manual_no_memory = 131,
                     manual_missing = 132, manual_locked = 133, manual_no_reader = 134, manual_no_reader_2 = 135,
                     explanations = 150;
} // namespace screen_text_number

/// The first line of explanation k, 0 to 11.
constexpr int explanation_number(int k) {
    constexpr int lines = 12;
    return screen_text_number::explanations + lines * k;
}

inline constexpr std::size_t screen_text_length = 89; ///< characters of a text; what is behind them is cut off

/// One text of a file that replaces one of the table's.
struct Translation {
    int line;   ///< of the file, from 1
    int number; ///< in front of it; may be any
    std::string text;
};

/// The texts of a file in the form of a message file; of several lines behind one number the last one. Pure.
std::vector<Translation> read_translations(std::string_view file);

/// Replaces texts by those of a file, after taking back what another file replaced. A file that does not exist replaces
/// nothing. Numbers that the table does not have, and what is cut off, are logged.
void load_screen_texts(const std::string& path);

/// A text as the player reads it; empty for a number that the table does not have. Valid until the next loading.
std::string_view screen_text(int number);

/// A text with its place for a number ("%2.2d") filled by two digits; without such a place, the text as it is.
std::string numbered_screen_text(int number, int value);

} // namespace vcc
