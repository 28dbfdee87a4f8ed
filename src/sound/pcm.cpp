#include "sound/pcm.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vcc {

void flip_sign_bits(std::span<unsigned char> bytes) {
    for (std::size_t at = 0; at < bytes.size(); ++at) // every byte: the compiler then uses wide registers
        bytes[at] = static_cast<unsigned char>(bytes[at] ^ at % 2 * 0x80);
}

void fade_in(std::span<unsigned char> bytes, int bits, int frame_bytes, int length) {
    const auto sample_bytes = static_cast<std::size_t>(bits / 8);
    const auto frame = static_cast<std::size_t>(frame_bytes);
    const std::size_t end = std::min(bytes.size(), frame * static_cast<std::size_t>(std::max(length, 0)));
    for (std::size_t at = 0; at + sample_bytes <= end; at += sample_bytes) {
        const auto level = static_cast<std::int64_t>(at / frame);
        if (sample_bytes == 1) {
            bytes[at] = static_cast<unsigned char>(silent_byte(8) + (bytes[at] - silent_byte(8)) * level / length);
            continue;
        }
        std::int16_t sample = 0;
        std::memcpy(&sample, &bytes[at], sizeof sample);
        sample = static_cast<std::int16_t>(sample * level / length);
        std::memcpy(&bytes[at], &sample, sizeof sample);
    }
}

} // namespace vcc
