// The two forms of PCM data: WAV files hold 16-bit samples signed, the library plays them unsigned. 8-bit samples are
// unsigned in both.
#pragma once

#include <span>

namespace vcc {

/// The byte that stands for silence in a WAV file's data.
constexpr unsigned char silent_byte(int bits) {
    return bits == 8 ? 128 : 0;
}

/// Turns signed 16-bit little-endian samples into unsigned ones, or back; an odd last byte is left alone.
void flip_sign_bits(std::span<unsigned char> bytes);

/// Raises the first `length` frames of a WAV file's data (8 or 16 bits) evenly from silence to their full level;
/// `frame_bytes` is a sample of every channel.
void fade_in(std::span<unsigned char> bytes, int bits, int frame_bytes, int length);

} // namespace vcc
