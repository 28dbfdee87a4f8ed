#include "sound/pcm.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vcc {

// Four samples at a time: half a megabyte is turned between two frames of the screen.
void flip_sign_bits(std::span<unsigned char> bytes) {
    constexpr unsigned char mask_bytes[8] = {0, 0x80, 0, 0x80, 0, 0x80, 0, 0x80};
    std::uint64_t mask = 0;
    std::memcpy(&mask, mask_bytes, sizeof mask);

    unsigned char* at = bytes.data();
    std::size_t left = bytes.size();
    for (; left >= sizeof mask; at += sizeof mask, left -= sizeof mask) {
        std::uint64_t samples = 0;
        std::memcpy(&samples, at, sizeof samples);
        samples ^= mask;
        std::memcpy(at, &samples, sizeof samples);
    }
    for (std::size_t high = 1; high < left; high += 2)
        at[high] = static_cast<unsigned char>(at[high] ^ 0x80);
}

} // namespace vcc
