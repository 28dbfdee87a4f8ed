// The settings that all four programs share: loaded, saved and reset. settings/rows.h has the record and its keys.
#pragma once

#include "settings/rows.h"

namespace vcc {

/// Selects data/configs/vcc.cfg as the library's configuration file and reads it. Selecting it again first writes
/// pending changes, then reads what other programs have written.
void select_config_file();

/// Writes the changes of set_config_int() and its companions to disk. The file is replaced whole or not at all, and
/// keeps everything else in it, comments included. If it cannot be written, logs that once per run and keeps the
/// changes for the next try. Call it instead of flush_config_file(), and before allegro_exit(). Invalidates texts that
/// get_config_string() has returned.
void flush_settings();

/// A "yes" or "no" key: true if its value begins with "yes" or the key is missing; an empty value is false.
bool config_flag(const char* section, const char* key);

void load_settings();
void reset_settings();
void save_settings();

} // namespace vcc
