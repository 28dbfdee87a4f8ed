// Pictures, sounds and films from what other programs write to what the control centre takes.
#pragma once

#include "media.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vcc::kit {

/// Red, green, blue and opacity of every pixel, 0 to 255 each, line by line from the top.
struct Image {
    int width = 0, height = 0; ///< pixels
    std::vector<std::uint8_t> rgba;
};

/// The bytes of a PCX file: `bits` a pixel, 8 or 24. What is less than half opaque becomes magenta, which the program
/// takes for transparent; an opaque colour so near to it that few bits would make it the same loses a little of its
/// likeness. With 8 bits a picture of more colours than the palette holds gets the best 255. Pure.
std::string pcx_bytes(const Image& image, int bits);

/// What became of a file. Without a fault the target is there, and `what` describes it.
struct Conversion {
    std::string fault; ///< "is damaged, or cut off"; the target is then unchanged
    std::string what;  ///< "800 x 600 pixels of 24 bits"
    bool seam = false; ///< the fault is that of a loop's seam
};

/// Told how much is done, 0 to 1.
using Progress = std::function<void(double share)>;

/// `bits` are 8 or 24.
Conversion convert_picture(const std::string& source, const std::string& target, int bits);

/// To PCM of 16 bits, mono or stereo. A `loop` is refused when its end does not run into its beginning.
Conversion convert_sound(const std::string& source, const std::string& target, bool loop, const Progress& progress);

/// To a silent AVI film of at most 800 x 600 pixels.
Conversion convert_film(const std::string& source, const std::string& target, const Progress& progress);

} // namespace vcc::kit
