#include "screen/slot.h"

#include "core/text.h"

namespace vcc {

bool is_text_window(const Slot& slot) {
    return slot.graphic != 0 && text_of(slot.text).starts_with("TEXT-WIN");
}

} // namespace vcc
