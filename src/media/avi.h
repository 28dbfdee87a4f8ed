// Decodes AVI films: the frames that the film player asks for by time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace vcc::platform {

enum class AviError { none, bad_format, memory, file, no_video, audio_format, video_format, decompressor, other };

/// A decoded frame. 8-bit frames have a colour table of 256 entries (blue, green, red, unused). Valid until the next
/// call on the same film.
struct AviFrame {
    int width = 0;            ///< pixels
    int height = 0;           ///< pixels
    std::int64_t number = -1; ///< in the film; the same number means the same picture
    int bits = 0;             ///< per pixel: 8, 16 (5-5-5), 24 (blue, green, red) or 32 (blue, green, red, unused)
    std::span<const std::uint8_t> colour_table;
    const std::uint8_t* top = nullptr; ///< first byte of the top row
    std::ptrdiff_t pitch = 0;          ///< bytes from a row to the one below it; may be negative

    std::span<const std::uint8_t> row(int y) const {
        return {top + y * pitch, static_cast<std::size_t>(width * bits / 8)};
    }
};

class AviFilm {
public:
    virtual ~AviFilm() = default;

    /// Time in milliseconds at which the last frame ends.
    virtual int end_ms() const = 0;

    /// The frame at a film time, which may go back; null if there is none (past the end, decoding error).
    virtual const AviFrame* frame_at(int time_ms) = 0;
};

/// A film, or null and the error.
struct OpenedFilm {
    std::unique_ptr<AviFilm> film;
    AviError error = AviError::none;
};
OpenedFilm open_avi(const std::string& path);

/// Gives back what open_avi() has loaded once for all films, when none is open any more. Another film may follow.
void release_film_decoder();

} // namespace vcc::platform
