// The pointer over a scaled picture: tells the library the picture's own pixels. The caller holds the display's lock.
#pragma once

#include "x11/shown_screen.h"
#include "x11/x_library.h"

namespace vcc::platform {

class ScaledPointer {
public:
    explicit ScaledPointer(const ShownScreen& shown) : shown_(shown) {}

    void moved(const XMotionEvent& event);
    void button(const XButtonEvent& event, bool pressed);
    void entered(const XCrossingEvent& event);
    void left(const XCrossingEvent& event);

    /// For a while after the program has placed the pointer or asked for its motion, motion counts as relative; then
    /// the desktop's pointer is moved to the program's. Call every 10 ms.
    void tick();

private:
    /// Pixels from the shown picture's corner; may lie outside it, in the bars.
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
    int discarded_ = 0;            ///< events since a warp; 0 without a warp
    long rest_x_ = 0, rest_y_ = 0; ///< relative motion below one picture pixel, times the shown size
};

} // namespace vcc::platform
