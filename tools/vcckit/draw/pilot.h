// A player without a display: performs what shows a picture, a list of keys and pointer moves, then takes the picture.
#pragma once

#include "vcckit/draw/render.h"

#include "core/geometry.h"
#include "core/handles.h"
#include "screen/slot.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vcc::kit {

struct Step {
    enum class Kind { point, left_click, right_click, help_key } kind;
    /// Where to point, if anywhere, asked at the step itself, because records move. Null for a key.
    std::function<std::optional<Point>()> place;
};

/// The slots of the screen: those of the menu also for what opens over it.
const SlotSet& set_of(const RenderRequest& request);

/// A place inside a slot for the pointer, pixels.
Point place_in(const Slot& slot);

/// Why the loaded screens have no such picture; empty if they have.
std::string fault_of(const RenderRequest& request);

/// The steps from the menu to the picture; those of the pressed look draw on `target`. The request has no fault.
std::vector<Step> steps_of(const RenderRequest& request, BITMAP* target);

/// Acts as the library's keyboard for its life. Performs the steps, waits until the picture on the display no longer
/// changes, copies it, and leaves the program.
class Pilot {
public:
    explicit Pilot(std::vector<Step> steps);
    ~Pilot();
    Pilot(const Pilot&) = delete;
    Pilot& operator=(const Pilot&) = delete;

    /// The picture; null if the program ended before it was taken.
    BitmapPtr take_picture() { return std::move(picture_); }

private:
    static int key_is_waiting();
    static int read_key();
    bool next_frame();
    void begin(const Step& step);

    static Pilot* active_;

    std::vector<Step> steps_;
    std::size_t step_ = 0;
    int frame_ = 0; ///< of the current step
    bool key_offered_ = false;
    BitmapPtr picture_;
};

} // namespace vcc::kit
