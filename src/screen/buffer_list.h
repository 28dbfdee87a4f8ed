// The buffer list: which picture goes into which graphic buffer.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vcc {

struct ListedPicture {
    int line;   ///< of the list, from 1
    int buffer; ///< 0 to 24
    std::string path;
};

/// A line that names no graphic buffer. Nothing after it is read.
struct UnknownBuffer {
    int line;
    char key; ///< "+" selects a buffer, "*" only checks its number
    int number;

    bool fails_list() const { return key == '*' || number < 0; } ///< otherwise it ends the list
};

struct BufferList {
    std::vector<ListedPicture> pictures; ///< in loading order
    std::optional<UnknownBuffer> unknown;
};

BufferList read_buffer_list(std::string_view text);

/// Creates the work bitmaps, then loads the pictures of a list file into the graphic buffers; meanwhile shows the
/// rotating backgrounds and feeds the music. Returns the number of pictures, 0 after a failure (a picture that cannot
/// be loaded is shown and logged here).
int load_graphic_buffers(const std::string& path);

/// The picture files that a list names, each once, in loading order.
std::vector<std::string> listed_pictures(const std::string& path);

} // namespace vcc
