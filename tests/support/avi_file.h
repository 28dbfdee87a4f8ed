// AVI files for tests, written byte by byte.
#pragma once

#include "support/wav_file.h"

#include <cstdint>
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
        audio_ = true;
        audio_format_ = std::move(format);
        return *this;
    }
    AviFile& compression(std::string letters) {
        compression_ = std::move(letters);
        return *this;
    }

    static std::string number(std::uint32_t value) { return little_endian(value, 4); }
    static std::string chunk(const std::string& name, const std::string& data) {
        return name + number(static_cast<std::uint32_t>(data.size())) + data + std::string(data.size() % 2, '\0');
    }

    std::string bytes() const {
        const auto count = static_cast<std::uint32_t>(frames_.size());
        std::string lists = chunk("avih", number(40000) + std::string(12, '\0') + number(count) + number(0) +
                                              number(1 + audio_) + number(0) + number(as_number(width_)) +
                                              number(as_number(height_)) + std::string(16, '\0'));
        lists += stream("vids", told_length_ < 0 ? count : static_cast<std::uint32_t>(told_length_), video_format());
        if (audio_)
            lists += stream("auds", 0, audio_format_);
        std::string movie = "movi", index;
        for (const std::string& frame : frames_) {
            index += "00db" + number(0x10) + number(static_cast<std::uint32_t>(movie.size())) +
                     number(static_cast<std::uint32_t>(frame.size()));
            movie += chunk("00db", frame);
        }
        return chunk("RIFF", "AVI " + chunk("LIST", "hdrl" + lists) + chunk("LIST", movie) + chunk("idx1", index));
    }

private:
    static std::uint32_t as_number(int value) { return static_cast<std::uint32_t>(value); }

    std::string stream(const std::string& type, std::uint32_t length, const std::string& format) const {
        return chunk("LIST", "strl" +
                                 chunk("strh", type + std::string(16, '\0') + number(scale_) + number(rate_) +
                                                   number(0) + number(length) + std::string(20, '\0')) +
                                 chunk("strf", format));
    }
    std::string video_format() const {
        return number(40) + number(as_number(width_)) + number(as_number(height_)) +
               number(1 | as_number(bits_) << 16) + compression_ + std::string(20, '\0') + colour_table_;
    }

    int width_, height_, bits_;
    std::uint32_t rate_ = 25, scale_ = 1;
    std::int64_t told_length_ = -1;
    bool audio_ = false;
    std::string compression_ = std::string(4, '\0'), colour_table_, audio_format_;
    std::vector<std::string> frames_;
};

} // namespace vcc::test
