#include "platform/process.h"

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <system_error>
#include <thread>

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace vcc::platform {

namespace {

constexpr int heap_size = 96 << 20; ///< bytes of address space; unused parts cost nothing
constexpr int own_mapping_size = 32 << 20;

// The graphics library's own handler would shut the library down in the middle of anything, and may abort.
void wait_for_requests(const sigset_t& requests, void (*ask)()) {
    int number = 0;
    ::sigwait(&requests, &number);
    ask();
    ::sigwait(&requests, &number);
    std::signal(number, SIG_DFL);
    ::pthread_sigmask(SIG_UNBLOCK, &requests, nullptr);
    ::raise(number);
}

} // namespace

void prepare_heap() {
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_THRESHOLD, own_mapping_size);
    mallopt(M_TRIM_THRESHOLD, 2 * heap_size);
    mallopt(M_TOP_PAD, heap_size);
    auto* const begin = static_cast<char*>(sbrk(0));
    void* volatile block = std::malloc(1 << 20); // grows the heap by its whole padding
    std::free(block);
    const auto grown = static_cast<char*>(sbrk(0)) - begin;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto to_page = static_cast<std::ptrdiff_t>((page - reinterpret_cast<std::uintptr_t>(begin) % page) % page);
    if (grown > to_page) // best effort: else the heap has pages of the usual size
        madvise(begin + to_page, static_cast<std::size_t>(grown - to_page), MADV_HUGEPAGE);
}

void trim_heap() {
    malloc_trim(0);
}

void take_termination_requests(void (*ask)()) {
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before); // inherited by the thread
    sigset_t requests;
    ::sigemptyset(&requests);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        ::sigaddset(&requests, number);
    try {
        std::thread(wait_for_requests, requests, ask).detach();
        ::sigorset(&before, &before, &requests);
    } catch (const std::system_error&) { // they end the process as before
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

} // namespace vcc::platform
