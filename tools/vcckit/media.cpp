#include "media.h"

#include "new_file.h"

#include "platform/files.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <utility>

namespace vcc::kit {

namespace {

constexpr std::int64_t pixel_limit = 1 << 26;

bool holds_one_picture(std::string_view format) {
    return format == "image2" || format.ends_with("_pipe");
}

double seconds(std::int64_t time, AVRational base) {
    return static_cast<double>(time) * base.num / base.den;
}

} // namespace

std::unique_ptr<Media> Media::open(const std::string& path, std::string& fault) {
    std::error_code error;
    const auto file = platform::system_path(path);
    if (!std::filesystem::is_regular_file(file, error)) { // opening a pipe would block
        fault = std::filesystem::exists(file, error) ? "is not a file" : "does not exist";
        return nullptr;
    }
    const MediaFunctions* const ffmpeg = media_functions();
    if (ffmpeg == nullptr) {
        fault = "cannot be read without the libraries of FFmpeg " + std::to_string(LIBAVUTIL_VERSION_MAJOR - 52) +
                ": install libavformat, libavcodec, libswresample and libswscale";
        return nullptr;
    }
    fault = "is not a picture, sound or film that FFmpeg knows";
    AVFormatContext* input = ffmpeg->avformat_alloc_context();
    if (input == nullptr)
        return nullptr;
    input->interrupt_callback.callback = [](void*) { return interrupted() ? 1 : 0; };
    AVDictionary* options = nullptr;
    ffmpeg->av_dict_set(&options, "protocol_whitelist", "file", 0);
    const std::string url = "file:" + path;
    const int result = ffmpeg->avformat_open_input(&input, url.c_str(), nullptr, &options);
    ffmpeg->av_dict_free(&options);
    if (result < 0) { // the library has freed the context
        if (result == AVERROR(EACCES))
            fault = "must not be read";
        return nullptr;
    }
    std::unique_ptr<Media> media(new Media);
    media->input_.reset(input);
    media->frame_.reset(ffmpeg->av_frame_alloc());
    media->before_.reset(ffmpeg->av_frame_alloc());
    media->packet_.reset(ffmpeg->av_packet_alloc());
    if (!media->frame_ || !media->before_ || !media->packet_ || ffmpeg->avformat_find_stream_info(input, nullptr) < 0)
        return nullptr;
    const auto best = [&](AVMediaType type) { return ffmpeg->av_find_best_stream(input, type, -1, -1, nullptr, 0); };
    media->still_ = holds_one_picture(input->iformat->name);
    media->pictures_ = best(AVMEDIA_TYPE_VIDEO);
    if (media->pictures_ >= 0 && (input->streams[media->pictures_]->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0)
        media->pictures_ = -1; // the cover of a song
    media->sound_ = best(AVMEDIA_TYPE_AUDIO);
    // FFmpeg would decode a text as a film of a terminal.
    if (media->kind() == MediaKind::none || std::string_view(input->iformat->name) == "tty")
        return nullptr;
    fault.clear();
    return media;
}

MediaKind Media::kind() const {
    if (pictures_ >= 0)
        return still_ ? MediaKind::picture : MediaKind::film;
    return sound_ >= 0 ? MediaKind::sound : MediaKind::none;
}

bool Media::choose(AVMediaType type, std::string& fault) {
    const MediaFunctions& ffmpeg = *media_functions();
    chosen_ = type == AVMEDIA_TYPE_AUDIO ? sound_ : pictures_;
    if (chosen_ < 0) {
        fault = type == AVMEDIA_TYPE_AUDIO ? "has no sound" : "has no picture";
        return false;
    }
    for (unsigned i = 0; i < input_->nb_streams; ++i)
        if (static_cast<int>(i) != chosen_)
            input_->streams[i]->discard = AVDISCARD_ALL;
    const AVCodec* decoder = ffmpeg.avcodec_find_decoder(stream().codecpar->codec_id);
    codec_.reset(decoder != nullptr ? ffmpeg.avcodec_alloc_context3(decoder) : nullptr);
    if (!codec_ || ffmpeg.avcodec_parameters_to_context(codec_.get(), stream().codecpar) < 0) {
        fault = "has a coding that this FFmpeg does not support";
        return false;
    }
    codec_->thread_count = 0; // one per processor
    codec_->max_pixels = pixel_limit;
    codec_->err_recognition = AV_EF_EXPLODE | AV_EF_CRCCHECK | AV_EF_BITSTREAM | AV_EF_BUFFER;
    codec_->pkt_timebase = stream().time_base;
    if (ffmpeg.avcodec_open2(codec_.get(), decoder, nullptr) < 0) {
        fault = "is too large, or has a coding that this FFmpeg does not support";
        return false;
    }
    return true;
}

/// Sends the decoder the next packet, or the end; false if the file is damaged.
bool Media::feed_decoder() {
    const MediaFunctions& ffmpeg = *media_functions();
    for (;;) {
        const int read = ffmpeg.av_read_frame(input_.get(), packet_.get());
        if (read == AVERROR_EOF)
            return ffmpeg.avcodec_send_packet(codec_.get(), nullptr) >= 0;
        if (read < 0)
            return false;
        // An empty packet repeats the previous frame; the decoder would take it for the end.
        const bool usable = packet_->stream_index == chosen_ && packet_->size > 0;
        const bool damaged = usable && ((packet_->flags & AV_PKT_FLAG_CORRUPT) != 0 ||
                                        ffmpeg.avcodec_send_packet(codec_.get(), packet_.get()) < 0);
        ffmpeg.av_packet_unref(packet_.get());
        if (usable)
            return !damaged;
    }
}

const AVFrame* Media::next_frame() {
    const MediaFunctions& ffmpeg = *media_functions();
    std::swap(frame_, before_);
    for (;;) {
        const int result = ffmpeg.avcodec_receive_frame(codec_.get(), frame_.get());
        if (result == AVERROR_EOF)
            return nullptr;
        const bool damaged = result >= 0
                                 ? frame_->decode_error_flags != 0 || (frame_->flags & AV_FRAME_FLAG_CORRUPT) != 0
                                 : result != AVERROR(EAGAIN) || !feed_decoder();
        if (damaged) {
            fault_ = "is damaged or truncated";
            return nullptr;
        }
        if (result >= 0)
            return frame_.get();
    }
}

AVRational Media::frame_rate() const {
    return media_functions()->av_guess_frame_rate(input_.get(), input_->streams[chosen_], nullptr);
}

AVRational Media::sample_aspect_ratio() const {
    return media_functions()->av_guess_sample_aspect_ratio(input_.get(), input_->streams[chosen_], nullptr);
}

double Media::time_of(const AVFrame& frame) const {
    const std::int64_t start = stream().start_time == AV_NOPTS_VALUE ? 0 : stream().start_time;
    if (frame.best_effort_timestamp == AV_NOPTS_VALUE)
        return -1;
    return seconds(frame.best_effort_timestamp - start, stream().time_base);
}

double Media::share_done(const AVFrame& frame) const {
    const double length = input_->duration > 0 ? static_cast<double>(input_->duration) / AV_TIME_BASE : 0;
    return length > 0 ? std::clamp(time_of(frame) / length, 0.0, 1.0) : 0;
}

} // namespace vcc::kit
