// When to show a picture again. A compositor may copy a window, and only afterwards tell the display server that it has
// seen the changes: what is drawn in between stays unseen until the next drawing, which may never come.
#pragma once

#include <chrono>

namespace vcc::platform {

class Reminder {
public:
    using Clock = std::chrono::steady_clock;

    void drawn(Clock::time_point now = Clock::now()) {
        drawn_ = now;
        left_ = 2;
    }

    /// True a quarter of a second after the latest drawing, and once more after a second, for a busy compositor.
    bool due(Clock::time_point now = Clock::now()) {
        using std::chrono::milliseconds;
        if (left_ == 0 || now < drawn_ + milliseconds(left_ == 2 ? 250 : 1000))
            return false;
        --left_;
        return true;
    }

private:
    Clock::time_point drawn_{};
    int left_ = 0;
};

} // namespace vcc::platform
