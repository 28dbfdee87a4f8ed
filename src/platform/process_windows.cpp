#include "platform/process.h"

#include <atomic>

#include <windows.h>

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

void prepare_heap() {} // large pages need a right there that players do not have

void take_termination_requests(void (*ask)()) {
    ask_to_end = ask;
    SetConsoleCtrlHandler(on_console_event, TRUE);
}

} // namespace vcc::platform
