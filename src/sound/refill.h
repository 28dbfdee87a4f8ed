// Plans the next refill of the music stream. Pure: positions and lengths in bytes of audio data in, a plan out, which
// wav_stream.cpp carries out.
#pragma once

namespace vcc {

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

/// `data_length` is 0 or more, `buffer_size` above 0, `active_half` 0 or 1.
RefillPlan plan_refill(const RefillState& state, long data_length, long buffer_size, bool loop_all, int active_half);

} // namespace vcc
