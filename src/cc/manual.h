#pragma once

#include <initializer_list>

namespace vcc {

/// The manual's file: the edition in the player's language if there is one.
const char* manual_file();

/// Opens the manual with the program associated with it; failures are shown and logged.
void open_manual();

/// Opens a document, with retries for missing files. `open` returns a result number, `wait` takes milliseconds. Returns
/// the number to report, or 33 if there is nothing to report. Pure except for the two calls.
template <class Open, class Wait>
int open_with_retries(Open open, Wait wait) {
    constexpr int silent = 33, file_not_found = 2, path_not_found = 3, association_incomplete = 27;
    int result = open();
    if (result != file_not_found && result != path_not_found && result != association_incomplete)
        return result;
    for (int pause_ms : {1000, 2000, 3000}) {
        wait(pause_ms);
        result = open();
        if (result != file_not_found)
            return silent;
    }
    return file_not_found;
}

} // namespace vcc
