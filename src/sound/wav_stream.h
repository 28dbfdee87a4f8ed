#pragma once

#include "core/handles.h"
#include "sound/refill.h"
#include "sound/wav_file.h"

#include <memory>
#include <span>
#include <string>

namespace vcc {

inline constexpr int stream_samples = 131072; ///< samples per channel of one stream buffer

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
