// Films: a decoded and shown frame against the decoder alone.
#include "codec.h"
#include "core/installation.h"
#include "figure.h"
#include "film/film.h"
#include "media/avi.h"
#include "world.h"

namespace vcc::bench {

namespace {

constexpr const char* film_path = films[0].path;

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
