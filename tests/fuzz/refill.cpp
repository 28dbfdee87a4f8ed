// What a refill of the music stream reads and fills, for any length and place: the parts fill the buffer and stay
// inside the data.
#include "world.h"

#include "sound/refill.h"

#include <cstring>

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::uint32_t numbers[3] = {};
    if (size < sizeof numbers + 1)
        return 0;
    std::memcpy(numbers, data, sizeof numbers);
    const long length = numbers[0] & 0x7FFFFFFF, buffer = 1 + (numbers[1] & 0xFFFFF);
    const long position = length == 0 ? 0 : static_cast<long>(numbers[2]) % length;
    RefillState state{position, data[12] & 3};
    if (state.end_mark == 3)
        state.end_mark = 0;
    for (int i = 0; i < 8; ++i) {
        const RefillPlan plan = plan_refill(state, length, buffer, (data[12] & 4) != 0, i & 1);
        const long filled = plan.tail + plan.wrap + plan.repeat + plan.silence;
        const bool inside = plan.tail >= 0 && plan.wrap >= 0 && plan.repeat >= 0 && plan.silence >= 0 &&
                            plan.tail_from + plan.tail <= length && plan.wrap <= length &&
                            (plan.repeat == 0 || plan.tail + plan.wrap >= length);
        const bool place = plan.next.position >= 0 && (plan.next.position < length || plan.next.position == 0);
        if (filled != buffer || !inside || !place)
            std::abort();
        if (plan.finished)
            return 0;
        state = plan.next;
    }
    return 0;
}
