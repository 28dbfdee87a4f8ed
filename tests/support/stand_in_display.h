// For unit tests: a bitmap that takes the display's place.
#pragma once

#include "core/handles.h"
#include "support/allegro_none.h"

namespace vcc::test {

/// Stands in for the display while it lives, and shows what reaches it.
class StandInDisplay {
public:
    StandInDisplay() {
        start_library();
        display_.reset(create_bitmap(800, 600));
        clear_bitmap(display_.get());
        screen = display_.get();
    }
    ~StandInDisplay() { screen = nullptr; }
    int at(int x, int y) const { return getpixel(display_.get(), x, y); }

private:
    BitmapPtr display_;
};

} // namespace vcc::test
