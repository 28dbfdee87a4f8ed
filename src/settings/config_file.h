// The settings file that all four programs share.
#pragma once

#include <string>

namespace vcc {

/// Selects data/configs/vcc.cfg as the library's configuration file and reads it. Selecting it again first writes
/// pending changes, then reads what other programs have written.
void select_config_file();

/// Sets a value in memory; it reaches the disk with the next flush_settings(). All changes of the program go through
/// here.
void set_config_value(const std::string& section, const std::string& key, const std::string& value);

/// Writes these changes to disk and takes over what other programs have written. The file is replaced whole or not at
/// all, and keeps everything else in it, comments included. If it cannot be written, logs that once per run and
/// keeps the changes for the next try. Call it instead of flush_config_file(), and before allegro_exit(). Invalidates
/// texts that get_config_string() has returned.
void flush_settings();

/// A "yes" or "no" key: true if its value begins with "yes" or the key is missing; an empty value is false.
bool config_flag(const char* section, const char* key);

} // namespace vcc
