// Converts pictures, sounds and films of other formats to those of the control centre: of any format that FFmpeg reads.
// Its program ffprobe tells of them, and its program ffmpeg makes something of them.
#pragma once

#include "vcckit/files/new_file.h"
#include "vcckit/files/run_program.h"

#include "core/result.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

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

/// Red, green, blue and opacity of every pixel, 0 to 255 each, line by line from the top.
struct Image {
    int width = 0, height = 0; ///< pixels
    std::vector<std::uint8_t> rgba;
};

/// Reads a PNG, JPEG, BMP, PCX or other picture, or the first frame of a film.
Result<Image> read_image(const Media& media);

/// Called with the share that is done, 0 to 1.
using Progress = std::function<void(double share)>;

// Each returns what it has made, "800 x 600 pixels of 24 bits", or why it cannot; the caller commits the file.

/// To a PCX picture with `bits` (8 or 24) per pixel. Pixels less than half opaque become magenta, the transparent
/// colour; opaque colours that 15 or 16 bits would turn into it are changed slightly. With 8 bits a picture of too many
/// colours gets the best 255.
Result<std::string> convert_picture(const Media& media, NewFile& file, int bits);

/// To 16-bit PCM, mono or stereo.
Result<std::string> convert_sound(const Media& media, NewFile& file, const Progress& progress);

/// To a silent AVI film of at most 800 x 600 pixels.
Result<std::string> convert_film(const Media& media, NewFile& file, const Progress& progress);

} // namespace vcc::kit
