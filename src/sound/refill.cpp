#include "sound/refill.h"

#include <algorithm>

namespace vcc {

// The library asks for a buffer when the other half begins to play, so the half that is active while a buffer is filled
// precedes it. When the marked half is active again, the buffer with the last data has been played.
RefillPlan plan_refill(const RefillState& state, long data_length, long buffer_size, bool loop_all, int active_half) {
    RefillPlan plan;
    plan.next = state;
    if (state.end_mark != 0) {
        plan.silence = buffer_size;
        plan.finished = state.end_mark == active_half + 1;
        return plan;
    }
    plan.tail_from = state.position;
    const long left = data_length - state.position;
    if (buffer_size < left) {
        plan.tail = buffer_size;
        plan.next.position += buffer_size;
        return plan;
    }
    plan.tail = left;
    const long rest = buffer_size - left;
    if (loop_all) {
        plan.silence = rest;
        plan.next = {0, active_half + 1};
    } else if (data_length == 0) {
        plan.silence = rest;
    } else {
        plan.wrap = std::min(rest, data_length);
        plan.repeat = rest - plan.wrap;
        plan.next.position = rest % data_length;
    }
    return plan;
}

} // namespace vcc
