#include "core/clock.h"

#include "core/mouse_buttons.h"
#include "x11/display.h"

#include <allegro.h>

#include <chrono>
#include <cstdlib>
#include <ctime>

namespace vcc {

namespace {

IdleTask idle_task;

constexpr int tick_ms = 5, late_tick_ms = 15;

void on_tick() {
    ms_counter.fetch_add(tick_ms, std::memory_order_relaxed);
    platform::wake_late_at_rest(late_tick_ms);
}

} // namespace

void start_tick() {
    install_timer();
    install_int(on_tick, tick_ms);
}

void set_idle_task(IdleTask task) {
    idle_task = task;
}

void run_idle_task() {
    idle_task.run();
}

void wait_ms(int duration_ms) {
    if (duration_ms <= 0)
        return;
    if (idle_task.wanted()) {
        using Clock = std::chrono::steady_clock; // the tick may be late
        for (const auto end = Clock::now() + std::chrono::milliseconds(duration_ms); Clock::now() < end;)
            run_idle_task();
    } else {
        rest(static_cast<unsigned>(duration_ms));
    }
    forget_mouse_buttons();
}

int skip_requested() {
    run_idle_task();
    return keypressed() != 0 || mouse_button_used() ? -1 : 0;
}

void seed_random() {
    const std::time_t now = std::time(nullptr);
    if (const std::tm* const utc = std::gmtime(&now))
        std::srand(static_cast<unsigned>(utc->tm_sec + 60 * (utc->tm_min + 20 * utc->tm_hour)));
}

} // namespace vcc
