// Films: a decoded and shown frame against the decoder alone.
#include "core/installation.h"
#include "figure.h"
#include "film/film.h"
#include "media/avi.h"
#include "world.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace vcc::bench {

namespace {

constexpr const char* film_path = films[0].path;

/// The decoding library itself, called as directly as it can be: decodes the first video stream of a film frame by
/// frame, over and over, in one thread.
class BareCodec {
public:
    explicit BareCodec(const std::string& path) {
        if (avformat_open_input(&container_, path.c_str(), nullptr, nullptr) != 0)
            return;
        const AVCodec* decoder = nullptr;
        stream_ = av_find_best_stream(container_, AVMEDIA_TYPE_VIDEO, -1, -1, &decoder, 0);
        if (stream_ < 0)
            return;
        codec_ = avcodec_alloc_context3(decoder);
        codec_->thread_count = 1;
        avcodec_parameters_to_context(codec_, container_->streams[stream_]->codecpar);
        if (avcodec_open2(codec_, decoder, nullptr) != 0)
            avcodec_free_context(&codec_);
    }
    ~BareCodec() {
        avcodec_free_context(&codec_);
        avformat_close_input(&container_);
        av_packet_free(&packet_);
        av_frame_free(&frame_);
    }
    BareCodec(const BareCodec&) = delete;
    BareCodec& operator=(const BareCodec&) = delete;

    bool ready() const { return codec_ != nullptr; }

    void decode_next() {
        while (avcodec_receive_frame(codec_, frame_) != 0) {
            if (av_read_frame(container_, packet_) != 0) {
                av_seek_frame(container_, stream_, 0, AVSEEK_FLAG_BACKWARD);
                avcodec_flush_buffers(codec_);
                continue;
            }
            if (packet_->stream_index == stream_)
                avcodec_send_packet(codec_, packet_);
            av_packet_unref(packet_);
        }
    }

private:
    AVFormatContext* container_ = nullptr;
    AVCodecContext* codec_ = nullptr;
    AVPacket* packet_ = av_packet_alloc();
    AVFrame* frame_ = av_frame_alloc();
    int stream_ = -1;
};

/// Takes a film frame by frame, from the beginning again after its end.
class FrameByFrame {
public:
    bool ready() const { return film_ && film_->end_ms() > 0; }

    const platform::AviFrame* next() {
        const std::int64_t before = number_;
        for (int tries = 0; tries < 100; ++tries) {
            const platform::AviFrame* const frame = film_->frame_at(time_ms_);
            time_ms_ += 10;
            if (time_ms_ >= film_->end_ms())
                time_ms_ = 0;
            if (frame && frame->number != before) {
                number_ = frame->number;
                return frame;
            }
        }
        return nullptr;
    }

private:
    std::unique_ptr<platform::AviFilm> film_ = platform::open_avi(film_path).film;
    std::int64_t number_ = -1;
    int time_ms_ = 0;
};

template <class Bare>
void film_frame(benchmark::State& state, double limit, Bare bare) {
    FrameByFrame film;
    const platform::AviFrame* const first = film.ready() ? film.next() : nullptr;
    if (!first) {
        state.SkipWithError("the film cannot be opened");
        return;
    }
    FilmScreen shown(*first);
    if (!shown.ready()) {
        state.SkipWithError("there is no screen");
        return;
    }
    compare(
        state, limit,
        [&] {
            if (const platform::AviFrame* frame = film.next())
                shown.show(*frame);
            else
                std::abort();
        },
        bare);
}

void film_frame_and_decoder(benchmark::State& state) {
    FrameByFrame decoder;
    if (decoder.ready())
        film_frame(state, 1.5, [&] { benchmark::DoNotOptimize(decoder.next()); });
}
VELDOR_FIGURE(film_frame_and_decoder);

/// The codec delivers its own colour format; turning that into pixels is counted as ours here.
void film_frame_and_codec(benchmark::State& state) {
    BareCodec codec(film_path);
    if (codec.ready())
        film_frame(state, no_limit, [&] { codec.decode_next(); });
    else
        state.SkipWithError("the codec cannot be opened");
}
VELDOR_FIGURE(film_frame_and_codec);

} // namespace

} // namespace vcc::bench
