// The language in use: the prefixes of its screen files, and its message catalogue.
#pragma once

#include <string>
#include <string_view>

namespace vcc {

extern int language;                   ///< 1 English, 2 German; 1 at start
extern std::string slot_prefix;        ///< put before the names of slot files
extern std::string text_window_prefix; ///< put before the names of text-window files

inline constexpr int message_limit = 300; ///< entries of a language's block

/// Makes a language (1 or 2) current: its number and its prefixes.
void use_language(int number);

/// The message file of a language (1 or 2), and the file that replaces texts of the screens.
std::string message_file(int number);
std::string screen_text_file(int number);

/// Sets the English prefixes, then reads the language file, and of its language the message file and the texts of the
/// screens. Failures are logged.
void load_language();

/// Reads a message file into the block of the current language; returns the number of text lines stored, 0 when it
/// cannot be opened (logged).
int load_messages(const std::string& path);

/// A message of the current language's block, index 0 to 299; empty when no file named it or the index is out of range.
std::string_view message(int index);

} // namespace vcc
