// A player without a display: keys and pointer come from a list of steps, and the picture is taken when they are done.
#pragma once

#include "core/handles.h"

#include <functional>
#include <vector>

namespace vcc::kit {

struct Step {
    enum class Kind { point, left_click, right_click, help_key } kind;
    /// Where to point, asked when the step comes: records move while the program runs. Null for a key.
    std::function<void(int& x, int& y)> place;
};

/// Installed for the life of the object as the library's keyboard. Takes the steps one by one, then waits for the
/// picture on the display to be still, keeps a copy, and leaves the program.
class Pilot {
public:
    explicit Pilot(std::vector<Step> steps);
    ~Pilot();
    Pilot(const Pilot&) = delete;
    Pilot& operator=(const Pilot&) = delete;

    /// The picture; null when the program ended by itself before it was taken.
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
