// For tests: WAV files byte by byte.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vcc::test {

inline std::string little_endian(std::uint32_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

/// A file from its chunks; data() closes it. Without fmt() the file has no format chunk.
class WavFile {
public:
    WavFile& chunk(std::string_view id, std::string_view content) { return chunk(id, content, content.size()); }
    /// `length` is the header's; the data may differ.
    WavFile& chunk(std::string_view id, std::string_view content, std::size_t length) {
        chunks_ += std::string(id) + little_endian(static_cast<std::uint32_t>(length), 4) + std::string(content);
        return *this;
    }
    WavFile& fmt(int bits, int channels, int rate = 22050, int tag = 1, std::string_view extra = {}) {
        const int block = bits / 8 * channels;
        return chunk("fmt ",
                     word(tag) + word(channels) + little_endian(static_cast<std::uint32_t>(rate), 4) +
                         little_endian(static_cast<std::uint32_t>(rate) * static_cast<std::uint32_t>(block), 4) +
                         word(block) + word(bits) + std::string(extra));
    }
    std::string data(std::string_view audio) { return chunk("data", audio).bytes(); }
    std::string bytes() const {
        return "RIFF" + little_endian(static_cast<std::uint32_t>(4 + chunks_.size()), 4) + "WAVE" + chunks_;
    }

private:
    static std::string word(int value) { return little_endian(static_cast<std::uint32_t>(value), 2); }

    std::string chunks_;
};

} // namespace vcc::test
