// A file in the place of another, so that nothing that other programs write into it is lost.
#pragma once

#include <optional>
#include <string>

namespace vcc::kit::edit {

/// Moves a file into place in one step. What was there by then, up to the last byte of a program that was still writing
/// it; nothing when there was no file. It lies under the temporary name afterwards. Throws Refused.
std::optional<std::string> exchange(const std::string& temporary, const std::string& file);

} // namespace vcc::kit::edit
