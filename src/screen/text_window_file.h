// The text-window file: per line a key of one or two letters and a number, for the window of the latest "+" line.
#pragma once

#include "screen/text_window.h"

#include <array>
#include <string>
#include <string_view>

namespace vcc {

/// Applies a text-window file in memory to the table; returns the number of "-" lines. Calls `each_line`, which may be
/// null, before every line.
int read_text_windows(std::string_view text, std::array<TextWindow, text_window_count>& windows, void (*each_line)());

/// Loads a file into the table; 0 if it cannot be opened or has no "-" line.
int load_text_windows(const std::string& path);

} // namespace vcc
