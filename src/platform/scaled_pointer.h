// The pointer over a picture that is shown at another size: the library is told of the picture's own pixels. The caller
// holds the display's lock.
#pragma once

#include "platform/shown_screen.h"
#include "platform/x_library.h"

namespace vcc::platform {

class ScaledPointer {
public:
    explicit ScaledPointer(const ShownScreen& shown) : shown_(shown) {}

    void moved(const XMotionEvent& event);
    void button(const XButtonEvent& event, bool pressed);
    void entered(const XCrossingEvent& event);
    void left(const XCrossingEvent& event);

    /// For a while after the program has placed the pointer or asked for its motion, the library takes motion as
    /// relative; then the desktop's pointer comes to where the program has its own. To be called every 10 ms.
    void tick();

private:
    /// Pixels from the shown picture's corner; in the bars outside of it.
    struct Spot {
        int x = 0, y = 0;
    };

    Spot spot(Window window, int x, int y) const;
    void tell(int dx, int dy, int dz = 0, int dw = 0) const;
    void tell_place(Spot at) const;
    void tell_motion(Spot by);
    void warp(Spot to) const;

    const ShownScreen& shown_;
    int buttons_ = 0;
    Spot last_;
    unsigned relative_events_ = 0;
    int discarded_ = 0;            ///< events after a warp; 0 when there was none
    long rest_x_ = 0, rest_y_ = 0; ///< relative motion that is less than a pixel of the picture, times the shown size
};

} // namespace vcc::platform
