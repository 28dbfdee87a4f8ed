// The music stream: a theme read from its WAV file, buffer by buffer.
#pragma once

#include "core/handles.h"
#include "sound/wav_file.h"

#include <memory>
#include <span>
#include <string>

namespace vcc {

inline constexpr int stream_samples = 131072; ///< samples per channel of one stream buffer

struct RefillState {
    long position = 0; ///< data bytes read so far, below the data length (or 0)
    int end_mark = 0;  ///< 0, or the half that was active when the theme's last data was written, plus 1
};

/// What fills a buffer, in this order: `tail` bytes from `tail_from` on, `wrap` bytes from the beginning of the data,
/// `repeat` bytes that each repeat the one a data length before, and silence.
struct RefillPlan {
    long tail_from = 0;
    long tail = 0;
    long wrap = 0;
    long repeat = 0;
    long silence = 0;
    bool finished = false; ///< the theme has been heard to its end: the buffer is not returned
    RefillState next;
};

/// Plans the next refill: positions and lengths in bytes of audio data in, a plan out. Pure. `data_length` is 0 or
/// more, `buffer_size` above 0, `active_half` 0 or 1.
RefillPlan plan_refill(const RefillState& state, long data_length, long buffer_size, bool loop_all, int active_half);

class WavStream {
public:
    /// Opens a file and starts the library's stream at a volume (0 to 255). Null after a failure, which is shown and
    /// logged.
    static std::unique_ptr<WavStream> open(const std::string& path, int volume);

    enum class Refill { no_buffer, filled, finished };

    /// Fills the next buffer that the library offers. `finished`: the theme has been heard to its end (loop_all only),
    /// and the stream is used up.
    Refill refill(bool loop_all);

    void set_volume(int volume);

    /// Stop or start the voice. A stopped stream keeps its position and must not be refilled.
    void pause();
    void resume();
    bool paused() const { return paused_; }

    /// Fills all buffers before the first sample is heard, so that a late first poll cannot lose the beginning of the
    /// theme, which rises from silence in `fade_in_ms`. Leaves the stream paused.
    void prime(bool loop_all, int fade_in_ms);

private:
    WavStream(const WavHeader& header, FilePtr file, AudioStreamPtr stream)
        : header_(header), file_(std::move(file)), stream_(std::move(stream)) {}

    void fill(const RefillPlan& plan, std::span<unsigned char> buffer);
    void read_at(long position, std::span<unsigned char> target);

    WavHeader header_;
    FilePtr file_;
    AudioStreamPtr stream_;
    RefillState state_;
    long file_position_ = -1; ///< data byte at which the file stands; -1: unknown
    bool paused_ = false;
    int fade_in_ms_ = 0; ///< of the next buffer
};

} // namespace vcc
