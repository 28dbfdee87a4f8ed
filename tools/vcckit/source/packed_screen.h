// The slot and toggle files of a screen in an installation, in all languages.
#pragma once

#include "vcckit/files/new_file.h"
#include "vcckit/source/screen_source.h"

#include "core/result.h"

#include <string>
#include <vector>

namespace vcc::kit {

/// Whether a folder is an installation, complete or not.
bool is_installation(const std::string& folder);

/// Adds the files of a screen to the set, and their names relative to the installation to `written`. Returns the reason
/// of a failure, else an empty text.
std::string write_packed_screen(const Screen& screen, const std::string& installation, FileSet& files,
                                std::vector<std::string>& written);

/// The records of a slot file and of its toggle file, if there is one.
Result<ScreenRecords> read_packed_records(const std::string& slot_file);

/// The screen of that name. Fails if a language lacks it or a file is unusable.
Result<Screen> read_packed_screen(const std::string& installation, const std::string& name);

/// "tools/language/english/e_factory.tw"
std::string language_file_name(const LanguageRow& language, std::string_view name);

/// "tools/language/english/e_vcc.slt"
std::string slot_file_name(const LanguageRow& language, std::string_view screen);

} // namespace vcc::kit
