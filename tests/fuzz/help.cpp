// Help files: every entry that a number leads to.
#include "world.h"

#include "interaction/help.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::as_text(data, size);
    for (const int number : {1, 2, 11, -3})
        for (const int length : {67, 1, 0}) {
            if (const auto entry = read_help_entry(text, number, length))
                if (entry->pages.empty() || entry->pages.size() > 9)
                    std::abort();
            read_help_page(text, number, length);
        }
    return 0;
}
