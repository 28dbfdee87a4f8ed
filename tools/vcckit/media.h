// Pictures, sounds and films of any format that FFmpeg reads, decoded frame by frame.
#pragma once

#include "media_functions.h"

#include <memory>
#include <string>

namespace vcc::kit {

enum class MediaKind { none, picture, sound, film };

class Media {
public:
    /// Opens a file; null with the reason in `fault` if it has no known format.
    static std::unique_ptr<Media> open(const std::string& path, std::string& fault);

    /// A film may also have sound.
    MediaKind kind() const;
    bool has_sound() const { return sound_ >= 0; }

    /// Chooses to decode the pictures or the sound; false with the reason in `fault`. Call once, before the first
    /// frame.
    bool choose(AVMediaType type, std::string& fault);

    /// The next frame; null at the end or if the file is damaged, see fault(). Only the frame before it stays valid.
    const AVFrame* next_frame();
    const std::string& fault() const { return fault_; }

    const AVStream& stream() const { return *input_->streams[chosen_]; }
    const AVCodecContext& codec() const { return *codec_; }
    AVRational frame_rate() const;          ///< 0/1 if unknown
    AVRational sample_aspect_ratio() const; ///< 0/1 if unknown

    /// Seconds from the beginning; below 0 if unknown.
    double time_of(const AVFrame& frame) const;

    /// Decoded share of the file, 0 to 1, if known.
    double share_done(const AVFrame& frame) const;

private:
    template <class Object>
    using Owned = std::unique_ptr<Object, MediaDeleter>;

    Media() = default;
    bool feed_decoder();

    Owned<AVFormatContext> input_;
    Owned<AVCodecContext> codec_;
    Owned<AVFrame> frame_, before_;
    Owned<AVPacket> packet_;
    std::string fault_;
    int pictures_ = -1, sound_ = -1, chosen_ = -1; ///< streams
    bool still_ = false;                           ///< the format holds one picture
};

} // namespace vcc::kit
