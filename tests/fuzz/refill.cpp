// What a refill of the music stream reads and fills, for any length and place: the parts fill the buffer and stay
// inside the data.
#include "sound/wav_stream.h"
#include "world.h"

#include <cstring>

void vcc::fuzz::one_input(std::string_view input) {
    std::uint32_t numbers[3] = {};
    if (input.size() < sizeof numbers + 1)
        return;
    std::memcpy(numbers, input.data(), sizeof numbers);
    const int flags = input[sizeof numbers];
    const long length = numbers[0] & 0x7FFFFFFF, buffer = 1 + (numbers[1] & 0xFFFFF);
    const long position = length == 0 ? 0 : static_cast<long>(numbers[2]) % length;
    RefillState state{position, (flags & 3) % 3};
    for (int i = 0; i < 8; ++i) {
        const RefillPlan plan = plan_refill(state, length, buffer, (flags & 4) != 0, i & 1);
        require(plan.tail + plan.wrap + plan.repeat + plan.silence == buffer);
        require(plan.tail >= 0 && plan.wrap >= 0 && plan.repeat >= 0 && plan.silence >= 0);
        require(plan.tail_from + plan.tail <= length && plan.wrap <= length);
        require(plan.repeat == 0 || plan.tail + plan.wrap >= length);
        require(plan.next.position >= 0 && (plan.next.position < length || plan.next.position == 0));
        if (plan.finished)
            return;
        state = plan.next;
    }
}
