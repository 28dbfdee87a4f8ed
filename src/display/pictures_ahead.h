// Pictures that are read on a thread of their own, while the program sets up window, input, fonts and sound.
#pragma once

#include "display/unpacked_picture.h"

#include <string>
#include <vector>

namespace vcc {

/// Begins to read the true-colour pictures of these files, in this order; does nothing while pictures of an earlier
/// call are left. Reading pauses while 16 MiB of samples wait.
void read_pictures_ahead(const std::vector<std::string>& paths);

/// The picture of a file, waited for when it is being read. Pictures that were to come before it are dropped. Nothing
/// when the file is not among those that are left or could not be unpacked.
std::optional<UnpackedPicture> take_picture(std::string_view path);

/// Drops what is left and ends the thread.
void stop_reading_ahead();

} // namespace vcc
