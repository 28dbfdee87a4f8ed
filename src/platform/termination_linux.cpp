#include "platform/termination.h"

#include <csignal>
#include <system_error>
#include <thread>

namespace vcc::platform {

namespace {

// The graphics library's own handler shuts it down in the middle of whatever it was doing, and may abort in that.
void wait_for_requests(const sigset_t& requests, void (*ask)()) {
    int number = 0;
    if (::sigwait(&requests, &number) != 0)
        return;
    ask();
    if (::sigwait(&requests, &number) != 0)
        return;
    std::signal(number, SIG_DFL);
    ::pthread_sigmask(SIG_UNBLOCK, &requests, nullptr);
    ::raise(number);
}

} // namespace

void take_termination_requests(void (*ask)()) {
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before); // the thread inherits it
    sigset_t requests;
    ::sigemptyset(&requests);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        ::sigaddset(&requests, number);
    try {
        std::thread(wait_for_requests, requests, ask).detach();
    } catch (const std::system_error&) {
        ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
        return;
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    ::pthread_sigmask(SIG_BLOCK, &requests, nullptr);
}

} // namespace vcc::platform
