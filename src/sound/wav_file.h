// WAV files: their header, effects loaded whole, and the two forms of PCM data: 16-bit samples are signed in WAV files
// and unsigned in the library, 8-bit samples unsigned in both.
#pragma once

#include "core/handles.h"
#include "core/result.h"

#include <span>
#include <string>

namespace vcc {

struct WavHeader {
    long data_offset = 0; ///< byte offset of the audio data; 0: the file cannot be streamed
    long data_length = 0; ///< bytes, never beyond the end of the file
    int rate = 22050;     ///< samples per second, 1000 to 192000
    int bits = 8;         ///< 8 or 16
    int channels = 1;     ///< 1 or 2

    int frame_bytes() const { return bits / 8 * channels; } ///< one sample of every channel
};

/// Why a file cannot be streamed, as the end of a sentence that begins with its name.
inline constexpr const char* unfit_wav = "is not PCM of 8 or 16 bits, mono or stereo, 1000 to 192000 Hz";

/// Reads the header of a PCM file. Every failure sets data_offset to 0; nobody needs to know which it was.
WavHeader parse_wav_header(const std::string& path);

/// Loads a PCM file as a sample. Fails if it is missing, not PCM, or too large for the memory. A file without audio
/// gives one sample of silence.
Result<SamplePtr> load_effect_file(const std::string& path);

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
