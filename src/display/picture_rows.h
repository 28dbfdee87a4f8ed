// Decoding true-colour PCX pictures straight into the display's own pixels.
#pragma once

#include "display/picture.h"

#include <allegro.h>

namespace vcc {

/// The picture in the bytes of a whole file, as a bitmap of 32 bits. Null when it is none of 24 bits with a sound
/// header, when its data ends early, or without memory. The result is the same as the library's, in half the time.
BitmapPtr decode_true_colour(std::span<const std::uint8_t> file);

} // namespace vcc
