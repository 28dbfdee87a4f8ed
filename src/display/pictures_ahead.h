// Reads pictures on two threads while the program sets up window, input, fonts and sound, or a module runs.
#pragma once

#include "display/picture.h"

#include <string>
#include <vector>

namespace vcc {

/// Starts reading the true-colour pictures of these files in this order instead of those of an earlier call. Pauses
/// while 16 MiB of samples wait.
void read_pictures_ahead(const std::vector<std::string>& paths);

/// Waits for the picture of a file and drops those that come before it. Nothing if the file is not among those left,
/// has changed since it was read, or cannot be unpacked.
std::optional<UnpackedPicture> take_picture(std::string_view path);

/// Drops the rest and ends the threads.
void stop_reading_ahead();

} // namespace vcc
