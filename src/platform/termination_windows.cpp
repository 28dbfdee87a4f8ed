#include "platform/termination.h"

#include <windows.h>

#include <atomic>

namespace vcc::platform {

namespace {

std::atomic<void (*)()> ask_to_end = nullptr;

BOOL WINAPI on_console_event(DWORD) {
    void (*const ask)() = ask_to_end.exchange(nullptr);
    if (!ask)
        return FALSE; // the system ends the process
    ask();
    return TRUE;
}

} // namespace

void take_termination_requests(void (*ask)()) {
    ask_to_end = ask;
    SetConsoleCtrlHandler(on_console_event, TRUE);
}

} // namespace vcc::platform
