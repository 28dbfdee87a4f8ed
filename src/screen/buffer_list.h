// The buffer list: which picture goes into which graphic buffer.
#pragma once

#include <string>
#include <vector>

namespace vcc {

/// Creates the work bitmaps, then loads the pictures of a list file into the graphic buffers; meanwhile shows the
/// rotating backgrounds and feeds the music. Returns the number of pictures, 0 after a failure (a picture that cannot
/// be loaded is shown and logged here).
int load_graphic_buffers(const std::string& path);

/// The picture files that a list names, each once, in loading order.
std::vector<std::string> listed_pictures(const std::string& path);

} // namespace vcc
