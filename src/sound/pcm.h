// The two forms of PCM data: 16-bit samples are signed in WAV files and unsigned in the library, 8-bit samples unsigned
// in both.
#pragma once

#include <span>

namespace vcc {

/// The byte that stands for silence in a WAV file's data.
constexpr unsigned char silent_byte(int bits) {
    return bits == 8 ? 128 : 0;
}

/// Converts 16-bit little-endian samples from signed to unsigned or back; leaves an odd last byte alone.
void flip_sign_bits(std::span<unsigned char> bytes);

/// Raises the first `length` frames of a WAV file's data (8 or 16 bits) linearly from silence to full level;
/// `frame_bytes` holds one sample of every channel.
void fade_in(std::span<unsigned char> bytes, int bits, int frame_bytes, int length);

} // namespace vcc
