// The millisecond tick, the waits built on it, and the work that goes on while the program waits.
#pragma once

#include <atomic>
#include <cstdint>

namespace vcc {

/// Milliseconds since the tick was installed, in steps of 5; wraps after about 49 days. Written by on_tick() only.
extern std::atomic<std::uint32_t> ms_counter;

/// Timer callback, to be installed with a period of 5 ms.
void on_tick();

/// Work that must go on while the program waits (the music stream). Installed once by its owner.
struct IdleTask {
    bool (*wanted)(); ///< true while a wait must keep running the task instead of sleeping
    void (*run)();
};
void set_idle_task(IdleTask task);

/// Runs the idle task once, whether it is wanted or not; nothing without a task.
void run_idle_task();

/// Waits `duration_ms`: busily running the idle task while it is wanted, otherwise asleep.
void wait_ms(int duration_ms);

/// Runs the idle task once, then tells whether a key is waiting or any mouse button is held: -1 (all bits set) or 0.
int skip_requested();

/// Seeds the C library's random numbers for the whole process from the UTC time of day.
void seed_random();

} // namespace vcc
