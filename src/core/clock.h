// The millisecond tick, waiting, and the work done meanwhile.
#pragma once

#include <atomic>
#include <cstdint>

namespace vcc {

/// Milliseconds since the tick was installed, in steps of 5; wraps after about 49 days. Up to 20 late while the program
/// waits for input.
inline std::atomic<std::uint32_t> ms_counter{0};

/// Installs the library's timer and the tick, which alone writes ms_counter, if they are not.
void start_tick();

/// Work that continues while the program waits (the music stream). Its owner installs it once.
struct IdleTask {
    bool (*wanted)() = [] { return false; }; ///< true while a wait must keep running the task instead of sleeping
    void (*run)() = [] {};
};
void set_idle_task(IdleTask task);

/// Runs the idle task once, wanted or not.
void run_idle_task();

/// Waits `duration_ms`: runs the idle task in a loop if it is wanted, otherwise sleeps. Clicks meanwhile do not count.
void wait_ms(int duration_ms);

/// Runs the idle task once, then returns -1 if a key is waiting or a mouse button is or was held, else 0.
int skip_requested();

/// Seeds the C library's random numbers from the UTC time of day.
void seed_random();

} // namespace vcc
