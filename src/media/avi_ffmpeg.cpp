// AVI films by FFmpeg. Linked, its libraries would pull in some 140 others and take most of the time between start and
// menu, so they are loaded with the first film.
#include "media/avi.h"

#include "media/avi_header.h"
#include "platform/shared_library.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace vcc::platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t header_limit = 1u << 20; // bytes searched for the header lists
constexpr std::chrono::seconds open_limit{5};
constexpr std::chrono::milliseconds catch_up_limit{500}; // slower films lag, but can still be skipped
constexpr std::size_t colour_table_size = 1024;
constexpr std::int64_t unknown_end = std::numeric_limits<std::int32_t>::max();

/// The functions that are called here, each found in its library when the object is made.
struct Ffmpeg {
    bool complete = true;
    // The versions that this program was built with: others have other structures.
    SharedLibrary util = load_system_library("avutil", LIBAVUTIL_VERSION_MAJOR);
    SharedLibrary codec = load_system_library("avcodec", LIBAVCODEC_VERSION_MAJOR);
    SharedLibrary format = load_system_library("avformat", LIBAVFORMAT_VERSION_MAJOR);
    SharedLibrary scale = load_system_library("swscale", LIBSWSCALE_VERSION_MAJOR);

// NOLINTBEGIN(bugprone-macro-parentheses): a declared name cannot stand in parentheses
#define VELDOR_FUNCTION(library, name)                                                                                 \
    decltype(&::name) name = reinterpret_cast<decltype(&::name)>(find(library, #name))
    // NOLINTEND(bugprone-macro-parentheses)
    VELDOR_FUNCTION(util, av_dict_free);
    VELDOR_FUNCTION(util, av_dict_set);
    VELDOR_FUNCTION(util, av_frame_alloc);
    VELDOR_FUNCTION(util, av_frame_free);
    VELDOR_FUNCTION(util, av_log_set_level);
    VELDOR_FUNCTION(codec, av_packet_alloc);
    VELDOR_FUNCTION(codec, av_packet_free);
    VELDOR_FUNCTION(codec, av_packet_unref);
    VELDOR_FUNCTION(codec, avcodec_alloc_context3);
    VELDOR_FUNCTION(codec, avcodec_find_decoder);
    VELDOR_FUNCTION(codec, avcodec_free_context);
    VELDOR_FUNCTION(codec, avcodec_open2);
    VELDOR_FUNCTION(codec, avcodec_parameters_to_context);
    VELDOR_FUNCTION(codec, avcodec_receive_frame);
    VELDOR_FUNCTION(codec, avcodec_send_packet);
    VELDOR_FUNCTION(format, av_find_input_format);
    VELDOR_FUNCTION(format, av_read_frame);
    VELDOR_FUNCTION(format, avformat_alloc_context);
    VELDOR_FUNCTION(format, avformat_close_input);
    VELDOR_FUNCTION(format, avformat_index_get_entries_count);
    VELDOR_FUNCTION(format, avformat_open_input);
    VELDOR_FUNCTION(scale, sws_freeContext);
    VELDOR_FUNCTION(scale, sws_getCachedContext);
    VELDOR_FUNCTION(scale, sws_scale);
#undef VELDOR_FUNCTION

    void* find(const SharedLibrary& library, const char* name) {
        void* const found = library.symbol(name);
        complete = complete && found;
        return found;
    }
};
Ffmpeg* ffmpeg = nullptr; // stays open at the program's end, which closing would only delay

/// Calls a library function that takes the pointer's address.
template <auto release>
struct Closer {
    template <class Object>
    void operator()(Object* object) const noexcept {
        (ffmpeg->*release)(&object);
    }
};
struct ScalerCloser {
    void operator()(SwsContext* scaler) const noexcept { ffmpeg->sws_freeContext(scaler); }
};

AviError error_of(int code, AviError otherwise) {
    switch (code) {
    case AVERROR_INVALIDDATA:
    case AVERROR_EOF:
        return AviError::bad_format;
    case AVERROR(ENOMEM):
        return AviError::memory;
    case AVERROR(ENOENT):
    case AVERROR(EACCES):
    case AVERROR(EIO):
        return AviError::file;
    default:
        return otherwise;
    }
}

// Frames of these formats are passed on unchanged; others are converted to 32 bits, which most screens show directly.
constexpr std::optional<int> direct_bits(int format) {
    switch (format) {
    case AV_PIX_FMT_PAL8:
        return 8;
    case AV_PIX_FMT_RGB555LE:
        return 16;
    case AV_PIX_FMT_BGR24:
        return 24;
    case AV_PIX_FMT_BGR0:
    case AV_PIX_FMT_BGRA:
        return 32;
    default:
        return std::nullopt;
    }
}

class FfmpegFilm final : public AviFilm {
public:
    FfmpegFilm(std::string path, const AviHeader& header) : path_(std::move(path)), header_(header) {}

    /// Opens the file and its decoder, or opens them again, at the beginning of the film.
    AviError rewind();

    int end_ms() const override;
    const AviFrame* frame_at(int time_ms) override;

private:
    AviError open_file();
    AviError open_decoder();
    bool decode_next(); // into spare_; false at the end of the file
    bool feed_decoder();
    bool convert();
    bool scale();

    const std::string path_;
    const AviHeader header_;
    Clock::time_point deadline_{};
    std::unique_ptr<AVFormatContext, Closer<&Ffmpeg::avformat_close_input>> format_;
    std::unique_ptr<AVCodecContext, Closer<&Ffmpeg::avcodec_free_context>> codec_;
    std::unique_ptr<AVFrame, Closer<&Ffmpeg::av_frame_free>> decoded_{ffmpeg->av_frame_alloc()},
        spare_{ffmpeg->av_frame_alloc()};
    std::unique_ptr<AVPacket, Closer<&Ffmpeg::av_packet_free>> packet_{ffmpeg->av_packet_alloc()};
    std::unique_ptr<SwsContext, ScalerCloser> scaler_;
    int stream_ = -1;
    std::int64_t end_ = unknown_end;        // number of the frame after the last
    std::int64_t asked_ = -1, number_ = -1; // frame last asked for, frame in decoded_
    std::int64_t next_ = -1;                // frame in spare_, not shown yet
    bool converted_ = false, drained_ = false;
    std::vector<std::uint8_t> rows_; // of a converted frame
    AviFrame frame_;
};

AviError FfmpegFilm::rewind() {
    if (!decoded_ || !spare_ || !packet_)
        return AviError::memory;
    codec_.reset();
    asked_ = number_ = next_ = -1;
    converted_ = drained_ = false;
    deadline_ = Clock::now() + open_limit;
    if (const AviError error = open_file(); error != AviError::none)
        return error;
    return open_decoder();
}

AviError FfmpegFilm::open_file() {
    AVFormatContext* format = ffmpeg->avformat_alloc_context();
    if (!format)
        return AviError::memory;
    format->interrupt_callback.opaque = this;
    format->interrupt_callback.callback = [](void* film) {
        return Clock::now() > static_cast<FfmpegFilm*>(film)->deadline_ ? 1 : 0;
    };
    AVDictionary* options = nullptr;
    ffmpeg->av_dict_set(&options, "protocol_whitelist", "file", 0);
    const std::string url = "file:" + path_;
    const int result = ffmpeg->avformat_open_input(&format, url.c_str(), ffmpeg->av_find_input_format("avi"), &options);
    ffmpeg->av_dict_free(&options);
    if (result < 0) // the library has freed the context
        return error_of(result, AviError::other);
    format_.reset(format);
    stream_ = -1;
    for (unsigned i = 0; i < format_->nb_streams; ++i)
        if (stream_ < 0 && format_->streams[i]->codecpar->codec_type == AVMEDIA_TYPE_VIDEO)
            stream_ = static_cast<int>(i);
        else
            format_->streams[i]->discard = AVDISCARD_ALL;
    if (stream_ < 0)
        return AviError::no_video;
    const int indexed = ffmpeg->avformat_index_get_entries_count(format_->streams[stream_]);
    const std::int64_t length = header_.length != 0 ? header_.length : std::max(indexed, 0);
    if (length > 0)
        end_ = std::min<std::int64_t>(end_, std::int64_t{header_.start} + length);
    return AviError::none;
}

AviError FfmpegFilm::open_decoder() {
    const AVCodecParameters* parameters = format_->streams[stream_]->codecpar;
    const AVCodec* decoder = ffmpeg->avcodec_find_decoder(parameters->codec_id);
    if (!decoder)
        return AviError::decompressor;
    codec_.reset(ffmpeg->avcodec_alloc_context3(decoder));
    if (!codec_)
        return AviError::memory;
    if (const int result = ffmpeg->avcodec_parameters_to_context(codec_.get(), parameters); result < 0)
        return error_of(result, AviError::decompressor);
    codec_->thread_count = 1;
    codec_->max_pixels = std::int64_t{avi_size_limit} * avi_size_limit;
    codec_->pkt_timebase = format_->streams[stream_]->time_base;
    if (const int result = ffmpeg->avcodec_open2(codec_.get(), decoder, nullptr); result < 0)
        return result == AVERROR(ENOMEM) ? AviError::memory : AviError::decompressor;
    return AviError::none;
}

// Sends the decoder the film's next packet, or the end.
bool FfmpegFilm::feed_decoder() {
    while (!drained_) {
        if (ffmpeg->av_read_frame(format_.get(), packet_.get()) < 0) {
            drained_ = true;
            return ffmpeg->avcodec_send_packet(codec_.get(), nullptr) >= 0;
        }
        // An empty packet repeats the previous frame; the decoder would take it for the end.
        const bool usable = packet_->stream_index == stream_ && packet_->size > 0;
        const bool sent = usable && ffmpeg->avcodec_send_packet(codec_.get(), packet_.get()) >= 0;
        ffmpeg->av_packet_unref(packet_.get());
        if (sent)
            return true;
        if (Clock::now() > deadline_)
            return false;
    }
    return false;
}

bool FfmpegFilm::decode_next() {
    for (;;) {
        const int result = ffmpeg->avcodec_receive_frame(codec_.get(), spare_.get());
        if (result >= 0)
            break;
        if (result == AVERROR_EOF || Clock::now() > deadline_ || !feed_decoder())
            return false;
    }
    // The timestamp is the frame's number in the stream; without one, frames are counted.
    const std::int64_t told = spare_->best_effort_timestamp;
    next_ = told != AV_NOPTS_VALUE && told > number_ ? told : std::max(number_ + 1, std::int64_t{header_.start});
    return true;
}

int FfmpegFilm::end_ms() const {
    // In floating point, because the product can exceed 64 bits; exact for films of any sensible length.
    const double time = static_cast<double>(end_) * 1000.0 * header_.scale / header_.rate;
    return static_cast<int>(std::min(time, static_cast<double>(std::numeric_limits<int>::max())));
}

const AviFrame* FfmpegFilm::frame_at(int time_ms) {
    const std::int64_t wanted =
        std::int64_t{std::max(time_ms, 0)} * header_.rate / (1000 * std::int64_t{header_.scale});
    if (wanted >= end_ || wanted < std::int64_t{header_.start})
        return nullptr;
    if ((wanted < asked_ || !codec_) && rewind() != AviError::none) {
        codec_.reset();
        return nullptr;
    }
    asked_ = wanted;
    deadline_ = Clock::now() + catch_up_limit;
    while (number_ < wanted && (next_ >= 0 || decode_next())) {
        if (next_ > wanted && number_ >= 0) // those between cannot be had: the previous one stays until its time
            break;
        std::swap(decoded_, spare_);
        number_ = std::exchange(next_, -1);
        converted_ = false;
    }
    if (drained_ && next_ < 0 && number_ < wanted && end_ == unknown_end)
        end_ = number_ + 1;
    if (number_ < 0 || (!converted_ && !convert()))
        return nullptr;
    return wanted < end_ ? &frame_ : nullptr;
}

bool FfmpegFilm::convert() {
    const bool fits = decoded_->width == header_.width && decoded_->height == header_.height;
    const std::optional<int> direct = fits ? direct_bits(decoded_->format) : std::nullopt;
    const int bits = direct.value_or(32);
    if (frame_.bits != 0 && frame_.bits != bits)
        return false; // a film has one depth
    frame_ = {header_.width, header_.height, number_, bits, {}, decoded_->data[0], decoded_->linesize[0]};
    if (bits == 8)
        frame_.colour_table = {decoded_->data[1], colour_table_size};
    converted_ = direct || scale();
    return converted_;
}

bool FfmpegFilm::scale() {
    scaler_.reset(ffmpeg->sws_getCachedContext(
        scaler_.release(), decoded_->width, decoded_->height, static_cast<AVPixelFormat>(decoded_->format),
        frame_.width, frame_.height, AV_PIX_FMT_BGR0, SWS_BILINEAR, nullptr, nullptr, nullptr));
    if (!scaler_)
        return false;
    frame_.pitch = std::ptrdiff_t{frame_.width} * 4;
    rows_.resize(static_cast<std::size_t>(frame_.pitch * frame_.height));
    frame_.top = rows_.data();
    std::uint8_t* const planes[4] = {rows_.data(), nullptr, nullptr, nullptr};
    const int strides[4] = {static_cast<int>(frame_.pitch), 0, 0, 0};
    return ffmpeg->sws_scale(scaler_.get(), decoded_->data, decoded_->linesize, 0, decoded_->height, planes, strides) >
           0;
}

} // namespace

OpenedFilm open_avi(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) // opening a pipe would wait for its other end
        return {nullptr, AviError::file};
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return {nullptr, AviError::file};
    std::string beginning(header_limit, '\0');
    file.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
    beginning.resize(static_cast<std::size_t>(file.gcount()));
    const AviHeader header = read_avi_header(beginning);
    if (header.error != AviError::none)
        return {nullptr, header.error};
    if (!ffmpeg)
        ffmpeg = new Ffmpeg;
    if (!ffmpeg->complete)
        return {nullptr, AviError::decompressor};
    ffmpeg->av_log_set_level(AV_LOG_QUIET);
    auto film = std::make_unique<FfmpegFilm>(path, header);
    if (const AviError error = film->rewind(); error != AviError::none)
        return {nullptr, error};
    return {std::move(film), AviError::none};
}

void release_film_decoder() {
    delete std::exchange(ffmpeg, nullptr);
}

} // namespace vcc::platform
