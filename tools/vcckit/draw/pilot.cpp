#include "vcckit/draw/pilot.h"

#include "cc/sets.h"
#include "core/mouse_buttons.h"
#include "core/window_state.h"
#include "display/buffers.h"

#include <utility>

namespace vcc::kit {

namespace {

constexpr int press_frame = 6; ///< enough to notice the pointer
constexpr int release_frame = 8;
constexpr int last_frame = 14;
constexpr int settle_frames = 12; ///< after the last step
constexpr int left_button = 1, right_button = 2, ascii_bits = 8;

/// As the library tells it.
void hold(int buttons) {
    mouse_b = buttons;
    mouse_callback(MOUSE_FLAG_LEFT_DOWN);
}

} // namespace

Pilot* Pilot::active_ = nullptr;

Pilot::Pilot(std::vector<Step> steps) : steps_(std::move(steps)) {
    active_ = this;
    close_requested = 0;
    mouse_x = 400; // where the program puts the pointer
    mouse_y = 300;
    mouse_z = 0;
    mouse_b = 0;
    watch_mouse_buttons();
    install_keyboard_hooks(key_is_waiting, read_key);
}

Pilot::~Pilot() {
    install_keyboard_hooks(nullptr, nullptr);
    mouse_b = 0;
    close_requested = 0;
    active_ = nullptr;
}

int Pilot::key_is_waiting() {
    return active_->next_frame() ? TRUE : FALSE;
}

int Pilot::read_key() {
    return KEY_F1 << ascii_bits;
}

/// Called once per frame, and whenever the program empties the keyboard. So a waiting key is offered at every other
/// call: for emptying, then for reading.
bool Pilot::next_frame() {
    if (close_requested)
        return false;
    if (step_ == steps_.size()) {
        if (++frame_ == settle_frames) {
            picture_ = copy_of(screen);
            close_requested = 1;
        }
        return false;
    }
    const Step& step = steps_[step_];
    if (step.kind == Step::Kind::help_key) {
        const bool open = cc_screen == CcScreen::help;
        key_offered_ = !open && !key_offered_;
        if (!open && ++frame_ < last_frame)
            return key_offered_;
    } else {
        begin(step);
        if (++frame_ <= last_frame)
            return false;
    }
    ++step_;
    frame_ = 0;
    return false;
}

void Pilot::begin(const Step& step) {
    if (const auto place = frame_ == 0 && step.place ? step.place() : std::nullopt) {
        mouse_x = place->x;
        mouse_y = place->y;
    }
    if (frame_ == press_frame && step.kind != Step::Kind::point)
        hold(step.kind == Step::Kind::left_click ? left_button : right_button);
    if (frame_ == release_frame)
        hold(0);
}

} // namespace vcc::kit
