// What the next refill of the music stream reads and fills. Pure: positions and lengths in bytes of audio data in,
// plan out; wav_stream.cpp carries it out.
#pragma once

#include <cstddef>

namespace vcc {

struct RefillState {
    long position = 0; ///< data bytes read so far, below the data length (or 0)
    int end_mark = 0;  ///< 0, or the active half + 1 at the moment when the last data of the theme was written
};

/// A buffer is filled in this order: `tail` bytes from `tail_from` on, `wrap` bytes from the beginning of the data,
/// `repeat` bytes that repeat what lies one data length before them, and silence up to the end.
struct RefillPlan {
    long tail_from = 0;
    long tail = 0;
    long wrap = 0;
    long repeat = 0;
    long silence = 0;
    bool finished = false; ///< the theme has been heard to its end: the buffer is not handed back
    RefillState next;
};

/// `data_length` is 0 or more, `buffer_size` above 0, `active_half` 0 or 1.
RefillPlan plan_refill(const RefillState& state, long data_length, long buffer_size, bool loop_all, int active_half);

} // namespace vcc
