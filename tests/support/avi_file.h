// AVI files for tests, written byte by byte.
#pragma once

#include "support/wav_file.h"

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vcc::test {

/// Builds an uncompressed film. Whatever a test does not set is right.
class AviFile {
public:
    AviFile(int width, int height, int bits) : width_(width), height_(height), bits_(bits) {}

    AviFile& rate(std::uint32_t frames, std::uint32_t seconds) {
        rate_ = frames;
        scale_ = seconds;
        return *this;
    }
    AviFile& length(std::uint32_t frames) {
        told_length_ = frames;
        return *this;
    }
    /// 256 entries of blue, green, red and a zero.
    AviFile& colour_table(std::string table) {
        colour_table_ = std::move(table);
        return *this;
    }
    /// Rows bottom first, padded.
    AviFile& frame(std::string rows) {
        frames_.push_back(std::move(rows));
        return *this;
    }
    AviFile& audio(std::string format) {
        audio_format_ = std::move(format);
        return *this;
    }
    AviFile& compression(std::string letters) {
        compression_ = std::move(letters);
        return *this;
    }

    static std::string chunk(const std::string& name, const std::string& data) {
        return name + number(data.size()) + data + std::string(data.size() % 2, '\0');
    }

    std::string bytes() const {
        std::string lists = chunk("avih", number(40000) + std::string(12, '\0') + number(frames_.size()) + number(0) +
                                              number(audio_format_ ? 2 : 1) + number(0) + number(width_) +
                                              number(height_) + std::string(16, '\0'));
        lists += stream("vids", told_length_.value_or(frames_.size()), video_format());
        if (audio_format_)
            lists += stream("auds", 0, *audio_format_);
        std::string movie = "movi", index;
        for (const std::string& frame : frames_) {
            index += "00db" + number(0x10) + number(movie.size()) + number(frame.size());
            movie += chunk("00db", frame);
        }
        return chunk("RIFF", "AVI " + chunk("LIST", "hdrl" + lists) + chunk("LIST", movie) + chunk("idx1", index));
    }

private:
    static std::string number(std::integral auto value) { return little_endian(static_cast<std::uint32_t>(value), 4); }

    std::string stream(const std::string& type, std::size_t length, const std::string& format) const {
        return chunk("LIST", "strl" +
                                 chunk("strh", type + std::string(16, '\0') + number(scale_) + number(rate_) +
                                                   number(0) + number(length) + std::string(20, '\0')) +
                                 chunk("strf", format));
    }
    std::string video_format() const {
        return number(40) + number(width_) + number(height_) + number(1 | bits_ << 16) + compression_ +
               std::string(20, '\0') + colour_table_;
    }

    int width_, height_, bits_;
    std::uint32_t rate_ = 25, scale_ = 1;
    std::optional<std::size_t> told_length_;
    std::optional<std::string> audio_format_;
    std::string compression_ = std::string(4, '\0'), colour_table_;
    std::vector<std::string> frames_;
};

} // namespace vcc::test
