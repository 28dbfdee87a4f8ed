#include "x11/display.h"

#include "platform/files.h"
#include "x11/x_library.h"

#include <array>
#include <atomic>
#include <cstdlib>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>

#include <unistd.h>

namespace vcc::platform {

namespace {

constexpr const char* compose_variable = "XCOMPOSEFILE"; ///< not for programs that we start
constexpr unsigned long late_wake_ns = 4'000'000;        ///< with the thread's own millisecond half of its 10 ms
constexpr int shortest_rest_ms = 15;                     ///< a shorter wait is no rest
std::atomic<bool> resting;
const int wake_descriptor = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);

bool player_has_a_compose_list() {
    const char* const home = std::getenv("HOME");
    return std::getenv(compose_variable) || (home && file_exists(std::string(home) + "/.XCompose"));
}

/// Whether the library has a screen on a display.
bool has_display() {
    return _xwin.display && screen;
}

void (*note_lost_display)();

// By default the X library leaves by exit(), which shuts the graphics library down in a thread that holds its lock.
int leave_now(Display*) {
    static std::atomic_flag leaving;
    while (leaving.test_and_set())
        ::pause(); // another thread is leaving
    note_lost_display();
    ::_exit(EXIT_FAILURE);
}

} // namespace

void end_with_display(void (*note)()) {
    note_lost_display = note;
    XSetIOErrorHandler(leave_now);
}

int start_library() {
    ::prctl(PR_SET_TIMERSLACK, late_wake_ns); // inherited by the library's thread
    const int result = allegro_init();
    ::prctl(PR_SET_TIMERSLACK, 0UL); // the default
    return result;
}

void take_display_events() {
    if (!has_display())
        return;
    const DisplayLock lock;
    if (XPending(_xwin.display) > 0)
        _xwin_handle_input();
}

void wait_for_input(int longest_ms) {
    if (has_display()) {
        const DisplayLock lock;
        if (XQLength(_xwin.display) > 0)
            return;
    }
    std::array<pollfd, 2> sources{{{wake_descriptor, POLLIN, 0}, {-1, POLLIN, 0}}};
    if (_xwin.display)
        sources[1].fd = XConnectionNumber(_xwin.display);
    resting = longest_ms >= shortest_rest_ms;
    const int ready = ::poll(sources.data(), sources.size(), longest_ms);
    resting = false;
    if (ready > 0 && sources[0].revents != 0) {
        eventfd_t count = 0;
        ::eventfd_read(wake_descriptor, &count);
    }
}

void wake_late_at_rest(int late_ms) {
    thread_local bool late = false;
    if (late == resting)
        return;
    late = !late;
    ::prctl(PR_SET_TIMERSLACK, late ? static_cast<unsigned long>(late_ms) * 1'000'000 : 0UL); // 0: as it started
}

void end_wait() {
    ::eventfd_write(wake_descriptor, 1);
}

// The library leaves its requests in the client's queue until its thread next reads events, up to 10 ms later. vsync()
// flushes the queue too, but then sleeps until the next tick of its 70 Hz counter.
void flush_display() {
    if (!has_display())
        return;
    const DisplayLock lock;
    show_scaled_drawing();
    XFlush(_xwin.display);
}

void install_keyboard_with(const std::string& compose_list) {
    const bool ours = !player_has_a_compose_list() && file_exists(compose_list) &&
                      ::setenv(compose_variable, whole_name(resolve_path(compose_list)).c_str(), 1) == 0;
    install_keyboard();
    if (ours)
        ::unsetenv(compose_variable);
}

const int full_screen_list_driver = GFX_XWINDOWS_FULLSCREEN;
const bool full_screen_is_centred = true;

} // namespace vcc::platform
