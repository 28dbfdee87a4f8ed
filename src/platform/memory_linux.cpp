#include "platform/memory.h"

#include <cstdint>
#include <cstdlib>
#include <initializer_list>

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace vcc::platform {

namespace {

constexpr int heap_size = 96 << 20; ///< bytes of address space; what is not used costs nothing
constexpr int own_mapping_size = 32 << 20;

} // namespace

void prepare_heap() {
    struct Row {
        int parameter, value;
    };
    for (const auto [parameter, value] : {Row{M_ARENA_MAX, 1}, Row{M_MMAP_THRESHOLD, own_mapping_size},
                                          Row{M_TRIM_THRESHOLD, 2 * heap_size}, Row{M_TOP_PAD, heap_size}})
        mallopt(parameter, value);
    void* const begin = sbrk(0);
    void* volatile block = std::malloc(1 << 20); // makes the heap grow by all of its padding
    std::free(block);
    void* const end = sbrk(0);
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto first = (reinterpret_cast<std::uintptr_t>(begin) + page - 1) / page * page;
    const auto last = reinterpret_cast<std::uintptr_t>(end);
    if (last > first) // a wish: without it the heap has pages of the usual size
        madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}

} // namespace vcc::platform
