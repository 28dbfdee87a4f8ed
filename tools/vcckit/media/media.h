// Pictures, sounds and films of any format that FFmpeg reads: what its program ffprobe tells of them, and what its
// program ffmpeg makes of them.
#pragma once

#include "vcckit/files/run_program.h"

#include "core/result.h"

#include <string>

namespace vcc::kit {

enum class MediaKind { none, picture, sound, film };

struct Media {
    std::string path;
    MediaKind kind = MediaKind::none;
    int pictures = -1, sound = -1; ///< streams; -1 without any. A film may also have sound
    int width = 0, height = 0;     ///< pixels of the pictures as they are stored, not turned
    int rate = 0, channels = 0;    ///< of the sound
    double seconds = 0;            ///< 0 if unknown
};

/// Fails if the file has no known format.
Result<Media> read_media(const std::string& path);

/// Runs ffmpeg on one stream of a file, with options that blanks separate, to a target ("pipe:1"); see run_program().
/// Returns why it failed.
std::string run_ffmpeg(const Media& media, int stream, const std::string& options, const std::string& target,
                       bool with_errors, const TakeOutput& take);

} // namespace vcc::kit
