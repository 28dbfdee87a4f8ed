// One WAV file playing through the library's audio stream.
#pragma once

#include "core/handles.h"
#include "sound/refill.h"
#include "sound/wav_header.h"

#include <memory>
#include <span>
#include <string>

namespace vcc {

inline constexpr int stream_samples = 131072; ///< samples per channel of one stream buffer

class WavStream {
public:
    /// Opens a file and starts the library's stream at a volume (0 to 255). On failure the player is told, the log
    /// says why, and the pointer is null.
    static std::unique_ptr<WavStream> open(const std::string& path, int volume);

    enum class Refill { no_buffer, filled, finished };

    /// Fills the next buffer that the library offers. `finished`: the theme has been heard to its end (loop_all only);
    /// the stream is then of no more use.
    Refill refill(bool loop_all);

    void set_volume(int volume);

    /// Stops or starts the voice. A stopped stream keeps its place and must not be refilled.
    void pause();
    void resume();
    bool paused() const { return paused_; }

    /// Fills what the library offers before the first sample is heard, so that the beginning of the theme is not lost
    /// to a late first poll. Leaves the stream paused.
    void prime(bool loop_all);

private:
    WavStream(const WavHeader& header, FilePtr file, AudioStreamPtr stream);

    void fill(const RefillPlan& plan, std::span<unsigned char> buffer);
    void read_at(long position, std::span<unsigned char> target);

    WavHeader header_;
    FilePtr file_;
    AudioStreamPtr stream_;
    RefillState state_;
    long file_position_ = -1; ///< data byte that the file stands at; -1: unknown
    bool paused_ = false;
    bool begun_ = false; ///< the first buffer, which holds the fade-in, has been filled
};

} // namespace vcc
