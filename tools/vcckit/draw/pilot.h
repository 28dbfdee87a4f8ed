// A player without a display: performs a list of keys and pointer moves, then takes the picture.
#pragma once

#include "core/geometry.h"
#include "core/handles.h"

#include <functional>
#include <optional>
#include <vector>

namespace vcc::kit {

struct Step {
    enum class Kind { point, left_click, right_click, help_key } kind;
    /// Where to point, if anywhere, asked at the step itself, because records move. Null for a key.
    std::function<std::optional<Point>()> place;
};

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
