// The log file: one entry per failure, opened and closed for each so that entries survive a crash.
#pragma once

#include <string>
#include <string_view>

namespace vcc {

/// Heads every entry: "CC: " during start-up, "CC " from the first pass on.
inline std::string module_prefix = "CC: ";

/// Appends one entry (writer, local time, message, empty line) to data/logfiles/veldor_log.txt.
/// Does nothing if the log cannot be opened; never creates its folder.
void write_log(std::string_view message);

/// printf into a string; the result is at most 4095 bytes.
[[gnu::format(printf, 1, 2)]] std::string format_text(const char* format, ...);

} // namespace vcc
