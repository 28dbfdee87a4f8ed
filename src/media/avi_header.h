// The header lists of an AVI file, checked before a decoder sees the file.
#pragma once

#include "media/avi.h"

#include <string_view>

namespace vcc::platform {

inline constexpr int avi_size_limit = 4096; ///< pixels of width and of height

struct AviHeader {
    AviError error = AviError::none; ///< none, bad_format, no_video, audio_format or video_format
    int width = 0, height = 0;       ///< pixels, 1 to avi_size_limit
    std::uint32_t scale = 1;         ///< a frame lasts scale / rate seconds; neither is 0
    std::uint32_t rate = 25;
    std::uint32_t start = 0;  ///< number of the first frame
    std::uint32_t length = 0; ///< frames; 0 if unknown: not told, or more than a million
};

/// Reads the header lists from the beginning of a file. The first video and the first audio stream count. Pure.
///
///   RIFF size "AVI "            a chunk: 4 letters, 32-bit size, the data, a pad byte after an odd size
///     LIST size "hdrl"          a list is a chunk whose data begin with 4 letters more
///       LIST size "strl"        one per stream
///         "strh"                type at 0, scale at 20, rate at 24, start at 28, length at 32
///         "strf"                video: 40 bytes or more, width at 4, height at 8 (negative: top row first)
AviHeader read_avi_header(std::string_view bytes);

} // namespace vcc::platform
