// Pictures, sounds and films of any format that FFmpeg reads, decoded frame by frame.
#pragma once

#include "media_functions.h"

#include <memory>
#include <string>

namespace vcc::kit {

enum class MediaKind { none, picture, sound, film };

class Media {
public:
    /// Opens a file; null with the reason in `fault` when it is no such file.
    static std::unique_ptr<Media> open(const std::string& path, std::string& fault);

    /// A film may have sound, too.
    MediaKind kind() const;
    bool has_sound() const { return sound_ >= 0; }

    /// Decodes the pictures or the sound from here on; false with the reason in `fault`. Once, before the first frame.
    bool choose(AVMediaType type, std::string& fault);

    /// The next frame; null at the end, and on damage, which fault() then tells. The frame before it stays valid, the
    /// ones before that do not.
    const AVFrame* next_frame();
    const std::string& fault() const { return fault_; }

    const AVStream& stream() const { return *input_->streams[chosen_]; }
    const AVCodecContext& codec() const { return *codec_; }
    AVRational frame_rate() const;          ///< 0/1 when it is not known
    AVRational sample_aspect_ratio() const; ///< 0/1 when it is not known

    /// Seconds from the beginning, or below 0 when the frame does not tell.
    double time_of(const AVFrame& frame) const;

    /// 0 to 1: how much of the file has been decoded, as far as it can be told.
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
