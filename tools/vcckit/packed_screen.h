// The slot and toggle files of a screen in an installation, in all languages.
#pragma once

#include "file_set.h"
#include "screen_source.h"

#include "core/result.h"

#include <string>
#include <vector>

namespace vcc::kit {

/// Whether a folder is an installation, or the beginning of one.
bool is_installation(const std::string& folder);

/// Puts the files of a screen into the set; their names relative to the installation go to `written`. The reason of a
/// failure, else an empty text.
std::string write_packed_screen(const Screen& screen, const std::string& installation, FileSet& files,
                                std::vector<std::string>& written);

/// The records of a slot file and of the toggle file of the same name, when there is one.
Result<ScreenRecords> read_packed_records(const std::string& slot_file);

/// The screen of that name. Fails when a language has no such file, or a file cannot be used.
Result<Screen> read_packed_screen(const std::string& installation, const std::string& name);

/// "tools/language/english/e_vcc.slt"
std::string slot_file_name(const LanguageRow& language, std::string_view screen);

} // namespace vcc::kit
