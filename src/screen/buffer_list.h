// The buffer list: which picture goes into which graphic buffer.
#pragma once

#include <string>

namespace vcc {

/// Creates the work bitmaps, then loads the pictures of a list file into the graphic buffers, showing the rotating
/// backgrounds and feeding the music on the way. Returns the number of pictures; 0 is failure (a picture that cannot be
/// loaded is shown and logged here).
int load_graphic_buffers(const std::string& path);

} // namespace vcc
