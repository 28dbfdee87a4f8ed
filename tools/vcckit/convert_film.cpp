#include "convert.h"

#include "new_file.h"

#include "core/log.h"

#include <algorithm>
#include <cmath>

namespace vcc::kit {

namespace {

constexpr int widest = 800, highest = 600;
constexpr AVRational usual_rate{25, 1};
constexpr double fastest = 60, slowest = 1;
constexpr double longest_gap = 60;                               ///< seconds without a new picture
constexpr std::int64_t size_limit = (std::int64_t{1} << 31) - 1; ///< bytes of an AVI file without extensions
constexpr int quality = 3;                                       ///< of the encoder: 1 best, 31 worst
constexpr int key_frame_distance = 12;

struct OutputDeleter {
    void operator()(AVFormatContext* output) const noexcept { media_functions()->avformat_free_context(output); }
    void operator()(AVIOContext* stream) const noexcept {
        media_functions()->av_free(stream->buffer);
        media_functions()->avio_context_free(&stream);
    }
};

int write_bytes(void* file, std::uint8_t* bytes, int count) {
    return static_cast<NewFile*>(file)->write(bytes, static_cast<std::size_t>(count)) ? count : AVERROR(EIO);
}

std::int64_t seek_bytes(void* file, std::int64_t offset, int whence) {
    std::FILE* const stream = static_cast<NewFile*>(file)->stream();
    if (whence == AVSEEK_SIZE || offset > size_limit)
        return AVERROR(EINVAL);
    return std::fseek(stream, static_cast<long>(offset), whence & ~AVSEEK_FORCE) == 0 ? std::ftell(stream)
                                                                                      : AVERROR(EIO);
}

/// Half of the coder's blocks of colour are two pixels wide and high.
int even(double pixels) {
    return std::max(2, static_cast<int>(std::lround(pixels / 2)) * 2);
}

struct Form {
    int width, height; ///< pixels
    AVRational rate;   ///< frames per second
};

/// The size of the film, at most that of the display, with square pixels.
Form form_of(const Media& media, const AVFrame& frame) {
    const AVRational aspect = media.sample_aspect_ratio();
    double width = frame.width;
    const double height = frame.height;
    if (aspect.num > 0 && aspect.den > 0)
        width = width * aspect.num / aspect.den;
    const double scale = std::min({1.0, widest / width, highest / height});
    AVRational rate = media.frame_rate();
    if (rate.num <= 0 || rate.den <= 0 || av_q2d(rate) < slowest)
        rate = usual_rate;
    else if (av_q2d(rate) > fastest)
        rate = {static_cast<int>(fastest), 1};
    return {even(width * scale), even(height * scale), rate};
}

class FilmWriter {
public:
    explicit FilmWriter(NewFile& file) : file_(file) {}

    /// Empty, or the reason of a failure.
    std::string begin(const Form& form);

    /// Writes a frame as often as it is shown until the next one at `until` seconds, perhaps never.
    std::string show(const AVFrame& frame, double until);
    std::string end();

    std::int64_t frames() const { return frames_; }

private:
    bool encode(const AVFrame* frame);
    std::string cannot_write() const {
        return file_.reason().empty() ? "cannot be written as an AVI film" : file_.reason();
    }

    NewFile& file_;
    const MediaFunctions& ffmpeg_ = *media_functions();
    std::unique_ptr<AVIOContext, OutputDeleter> bytes_;
    std::unique_ptr<AVFormatContext, OutputDeleter> output_; // closed before its bytes
    std::unique_ptr<AVCodecContext, MediaDeleter> coder_;
    std::unique_ptr<AVFrame, MediaDeleter> picture_;
    std::unique_ptr<AVPacket, MediaDeleter> packet_;
    std::unique_ptr<SwsContext, MediaDeleter> scaler_;
    AVStream* stream_ = nullptr;
    Form form_{};
    std::int64_t frames_ = 0;
};

std::string FilmWriter::begin(const Form& form) {
    constexpr int buffer_size = 1 << 16;
    form_ = form;
    const AVCodec* const codec = ffmpeg_.avcodec_find_encoder(AV_CODEC_ID_MPEG4);
    output_.reset(ffmpeg_.avformat_alloc_context());
    coder_.reset(codec != nullptr ? ffmpeg_.avcodec_alloc_context3(codec) : nullptr);
    picture_.reset(ffmpeg_.av_frame_alloc());
    packet_.reset(ffmpeg_.av_packet_alloc());
    auto* const buffer = static_cast<std::uint8_t*>(ffmpeg_.av_malloc(buffer_size));
    bytes_.reset(buffer != nullptr
                     ? ffmpeg_.avio_alloc_context(buffer, buffer_size, 1, &file_, nullptr, write_bytes, seek_bytes)
                     : nullptr);
    if (!output_ || !coder_ || !picture_ || !packet_ || !bytes_)
        return "cannot be coded: FFmpeg has no MPEG-4 coder here";
    coder_->width = picture_->width = form.width;
    coder_->height = picture_->height = form.height;
    coder_->pix_fmt = AV_PIX_FMT_YUV420P;
    picture_->format = coder_->pix_fmt;
    coder_->time_base = {form.rate.den, form.rate.num};
    coder_->framerate = form.rate;
    coder_->gop_size = key_frame_distance;
    coder_->codec_tag = MKTAG('X', 'V', 'I', 'D');
    coder_->flags |= AV_CODEC_FLAG_QSCALE | AV_CODEC_FLAG_BITEXACT;
    coder_->global_quality = quality * FF_QP2LAMBDA;
    output_->oformat = ffmpeg_.av_guess_format("avi", nullptr, nullptr);
    output_->pb = bytes_.get();
    output_->flags |= AVFMT_FLAG_BITEXACT | AVFMT_FLAG_CUSTOM_IO;
    stream_ = ffmpeg_.avformat_new_stream(output_.get(), nullptr);
    if (output_->oformat == nullptr || stream_ == nullptr || ffmpeg_.avcodec_open2(coder_.get(), codec, nullptr) < 0 ||
        ffmpeg_.avcodec_parameters_from_context(stream_->codecpar, coder_.get()) < 0 ||
        ffmpeg_.av_frame_get_buffer(picture_.get(), 0) < 0)
        return cannot_write();
    stream_->time_base = coder_->time_base;
    stream_->avg_frame_rate = form.rate;
    return ffmpeg_.avformat_write_header(output_.get(), nullptr) < 0 ? cannot_write() : "";
}

bool FilmWriter::encode(const AVFrame* frame) {
    if (ffmpeg_.avcodec_send_frame(coder_.get(), frame) < 0)
        return false;
    for (;;) {
        const int result = ffmpeg_.avcodec_receive_packet(coder_.get(), packet_.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF)
            return true;
        if (result < 0)
            return false;
        packet_->stream_index = stream_->index;
        ffmpeg_.av_packet_rescale_ts(packet_.get(), coder_->time_base, stream_->time_base);
        if (ffmpeg_.av_interleaved_write_frame(output_.get(), packet_.get()) < 0)
            return false;
    }
}

std::string FilmWriter::show(const AVFrame& frame, double until) {
    const auto end = static_cast<std::int64_t>(std::llround(until * av_q2d(form_.rate)));
    if (end <= frames_)
        return {};
    if (static_cast<double>(end - frames_) > longest_gap * av_q2d(form_.rate))
        return "has no picture for more than a minute";
    scaler_.reset(ffmpeg_.sws_getCachedContext(scaler_.release(), frame.width, frame.height,
                                               static_cast<AVPixelFormat>(frame.format), form_.width, form_.height,
                                               coder_->pix_fmt, SWS_BICUBIC, nullptr, nullptr, nullptr));
    if (!scaler_ || ffmpeg_.av_frame_make_writable(picture_.get()) < 0 ||
        ffmpeg_.sws_scale(scaler_.get(), frame.data, frame.linesize, 0, frame.height, picture_->data,
                          picture_->linesize) <= 0)
        return "has pixels of a kind that cannot be converted";
    for (; frames_ < end; ++frames_) {
        picture_->pts = frames_;
        if (!encode(picture_.get()))
            return cannot_write();
    }
    return bytes_->pos > size_limit ? "is too long for an AVI file" : "";
}

std::string FilmWriter::end() {
    if (!encode(nullptr) || ffmpeg_.av_write_trailer(output_.get()) < 0)
        return cannot_write();
    ffmpeg_.avio_flush(bytes_.get());
    return bytes_->error < 0 ? cannot_write() : "";
}

/// Writes the film of `media` frame by frame; empty, or the reason of a failure.
std::string write_film(Media& media, FilmWriter& writer, Conversion& done, const Progress& progress) {
    const AVFrame* frame = media.next_frame();
    if (frame == nullptr)
        return media.fault().empty() ? "has no picture" : media.fault();
    const Form form = form_of(media, *frame);
    std::string fault = writer.begin(form);
    double length = 1 / av_q2d(form.rate);
    for (double time = 0; fault.empty() && frame != nullptr;) {
        if (interrupted())
            return "was interrupted";
        const AVFrame& shown = *frame; // until the next one
        progress(media.share_done(shown));
        frame = media.next_frame();
        if (!media.fault().empty())
            return media.fault();
        const double told = frame != nullptr ? media.time_of(*frame) : -1;
        const double until = told > time ? told : time + length;
        length = until - time;
        time = until;
        fault = writer.show(shown, until);
    }
    if (fault.empty())
        fault = writer.end();
    done.what = format_text("%.1f s of %d x %d pixels, %.4g frames per second",
                            static_cast<double>(writer.frames()) / av_q2d(form.rate), form.width, form.height,
                            av_q2d(form.rate));
    return fault;
}

} // namespace

Conversion convert_film(const std::string& source, const std::string& target, const Progress& progress) {
    Conversion done;
    const auto media = Media::open(source, done.fault);
    if (!media || !media->choose(AVMEDIA_TYPE_VIDEO, done.fault))
        return done;
    NewFile file(target);
    if (!file.stream()) {
        done.fault = file.reason();
        return done;
    }
    {
        FilmWriter writer(file);
        done.fault = write_film(*media, writer, done, progress);
    }
    if (done.fault.empty() && media->has_sound())
        done.what += "; without its sound: vcckit convert " + source + " -o NAME.wav";
    if (done.fault.empty() && !interrupted() && !file.commit())
        done.fault = file.reason();
    return done;
}

} // namespace vcc::kit
