// The music stream: a theme read from its WAV file, buffer by buffer.
#pragma once

#include "core/handles.h"
#include "sound/wav_file.h"

#include <cstddef>
#include <memory>
#include <optional>
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

    void fill(std::span<unsigned char> buffer, bool loop_all);
    void read_at(std::size_t position, std::span<unsigned char> target);

    WavHeader header_;
    FilePtr file_;
    AudioStreamPtr stream_;
    std::size_t position_ = 0;     ///< data bytes read so far
    std::optional<int> last_half_; ///< the half that was active when the theme's last data was written
    bool paused_ = false;
    int fade_in_ms_ = 0; ///< of the next buffer
};

} // namespace vcc
