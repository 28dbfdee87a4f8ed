// For unit tests: slots that are described in one line.
#pragma once

#include "core/text.h"
#include "screen/slot.h"

#include <initializer_list>
#include <string_view>

namespace vcc::test {

struct SlotField {
    std::int32_t Slot::*field;
    int value;
};

inline void set_fields(Slot& slot, std::initializer_list<SlotField> fields) {
    for (const SlotField& each : fields)
        slot.*each.field = each.value;
}

inline Slot make_slot(std::string_view text, std::initializer_list<SlotField> fields = {}) {
    Slot slot{};
    store_text(slot.text, text);
    set_fields(slot, fields);
    return slot;
}

} // namespace vcc::test
