// Help files: every entry that a number leads to.
#include "interaction/help_file.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    for (const int number : {1, 2, 11, -3}) {
        if (const auto entry = read_help_entry(input, number))
            require(!entry->pages.empty() && entry->pages.size() <= 9);
        read_help_page(input, number);
    }
}
