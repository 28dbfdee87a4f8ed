// The log file: one entry a failure, opened and closed for each so that entries survive a crash.
#pragma once

#include <string>
#include <string_view>

namespace vcc {

/// The writer's name at the head of every entry: "CC: " during start-up, "CC " from the first pass on.
extern std::string module_prefix;

/// Appends one entry (writer, local time, message, empty line) to data/logfiles/veldor_log.txt.
/// A log that cannot be opened is ignored; the folder is never created.
void write_log(std::string_view message);

/// printf into a string; the result is at most 4095 bytes.
[[gnu::format(printf, 1, 2)]] std::string format_text(const char* format, ...);

} // namespace vcc
