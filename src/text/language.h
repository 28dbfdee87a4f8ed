// The language in use: the prefixes of its screen files, and its message catalogue.
#pragma once

#include <string>
#include <string_view>

namespace vcc {

inline int language = 1;               ///< 1 English, 2 German
inline std::string slot_prefix;        ///< of the names of slot files
inline std::string text_window_prefix; ///< of the names of text-window files

inline constexpr int message_limit = 300; ///< messages of a language

/// Makes a language (1 or 2) and its prefixes current.
void use_language(int number);

/// The files of a language (1 or 2) with its messages and its translations of the texts of the screens.
std::string message_file(int number);
std::string screen_text_file(int number);

/// Sets the English prefixes, then reads the language file, and the messages and texts of the screens of the language
/// that it names. Failures are logged.
void load_language();

/// Reads a message file; its messages replace those read before. Returns the number of text lines stored, 0 if it
/// cannot be opened (logged).
int load_messages(const std::string& path);

/// A message that has been read, index 0 to 299; empty if no file has it or the index is out of range.
std::string_view message(int index);

} // namespace vcc
