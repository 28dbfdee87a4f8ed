#include "platform/process.h"

#include <allegro.h>
#include <winalleg.h>

#include <atomic>

namespace vcc::platform {

namespace {

constexpr DWORD leave_limit_ms = 4000; ///< the system waits five seconds, then ends the process

std::atomic<void (*)()> ask_to_end = nullptr;

bool ask_once() {
    void (*const ask)() = ask_to_end.exchange(nullptr);
    if (ask)
        ask();
    return ask != nullptr;
}

// Ctrl+C and the closing of the console that the program was started from. The system ends the process after a second
// one.
BOOL WINAPI on_console_event(DWORD) {
    return ask_once();
}

// The session ends: the process may be ended as soon as this returns, so the window's thread goes on with its messages
// here until the program has closed the window. Returns 0 for a message that it has handled.
int on_window_message(HWND window, UINT message, WPARAM ends, LPARAM, int* result) {
    if (message != WM_ENDSESSION || !ends || !ask_once())
        return 1;
    for (const DWORD begin = GetTickCount(); IsWindow(window) && GetTickCount() - begin < leave_limit_ms;) {
        MSG next;
        if (PeekMessageW(&next, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&next);
        else
            Sleep(10);
    }
    PostQuitMessage(0);
    *result = 0;
    return 0;
}

} // namespace

void prepare_heap() {} // large pages need a right there that players do not have

void trim_heap() {} // blocks of a picture's size go back at once

void take_termination_requests(void (*ask)()) {
    ask_to_end = ask;
    AttachConsole(ATTACH_PARENT_PROCESS); // a windowed program starts without a console; fails if there is none
    SetConsoleCtrlHandler(on_console_event, TRUE);
    win_set_msg_pre_proc(on_window_message);
}

} // namespace vcc::platform
