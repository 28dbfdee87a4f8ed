// The game's manual.
#pragma once

#include <allegro.h>

#include <initializer_list>

namespace vcc {

/// The manual's file: the edition in the player's language when there is one.
const char* manual_file();

/// Opens the manual with the desktop's associated program; failures are shown and logged.
void open_manual(BITMAP* target);

/// The result numbers of opening a document, with the retries that missing files get. `open` gives a result number,
/// `wait` takes milliseconds. Pure but for the two. Returns the number that is to be reported, or 33 when nothing is.
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
