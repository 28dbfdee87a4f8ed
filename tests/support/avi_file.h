// AVI files for tests, written byte by byte.
#pragma once

#include "support/wav_file.h"

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vcc::test {

/// An uncompressed film. Whatever a test does not set is right.
struct AviFile {
    int width = 2, height = 2, bits = 24;
    std::uint32_t rate = 25, scale = 1;                                ///< frames in so many seconds
    std::optional<std::size_t> told_length = {};                       ///< the header's number of frames
    std::optional<std::string> audio_format = {};                      ///< of a second stream
    std::string compression = std::string(4, '\0'), colour_table = {}; ///< 256 entries of blue, green, red and a zero
    std::vector<std::string> frames = {};                              ///< rows bottom first, padded

    static std::string chunk(const std::string& name, const std::string& data) {
        return name + number(data.size()) + data + std::string(data.size() % 2, '\0');
    }

    std::string bytes() const {
        std::string lists = chunk("avih", number(40000) + std::string(12, '\0') + number(frames.size()) + number(0) +
                                              number(audio_format ? 2 : 1) + number(0) + number(width) +
                                              number(height) + std::string(16, '\0'));
        lists += stream("vids", told_length.value_or(frames.size()), video_format());
        if (audio_format)
            lists += stream("auds", 0, *audio_format);
        std::string movie = "movi", index;
        for (const std::string& frame : frames) {
            index += "00db" + number(0x10) + number(movie.size()) + number(frame.size());
            movie += chunk("00db", frame);
        }
        return chunk("RIFF", "AVI " + chunk("LIST", "hdrl" + lists) + chunk("LIST", movie) + chunk("idx1", index));
    }

private:
    static std::string number(std::integral auto value) { return little_endian(static_cast<std::uint32_t>(value), 4); }

    std::string stream(const std::string& type, std::size_t length, const std::string& format) const {
        return chunk("LIST", "strl" +
                                 chunk("strh", type + std::string(16, '\0') + number(scale) + number(rate) + number(0) +
                                                   number(length) + std::string(20, '\0')) +
                                 chunk("strf", format));
    }
    std::string video_format() const {
        return number(40) + number(width) + number(height) + number(1 | bits << 16) + compression +
               std::string(20, '\0') + colour_table;
    }
};

} // namespace vcc::test
