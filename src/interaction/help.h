// Help pages: a window over the running screen with the help entry of a slot.
#pragma once

#include "core/installation.h"
#include "screen/slot.h"

#include <allegro.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vcc {

inline int help_line_length = help_line_standard; ///< characters of a help line

/// One entry of a help file.
struct HelpEntry {
    std::vector<int> pages; ///< entry numbers, the entry's own first; 1 to 9
    int font = 4, text_colour = 14, window_colour = 0, shadow_colour = 0, sound = 26, column = 100, row = 100;
    std::vector<std::string> lines; ///< text lines
    bool complete = false;          ///< false: the text runs to the end of the file
};

/// Reads an entry of a help file in memory; nothing if the file has no such entry. Cuts lines to `line_length`
/// characters; keeps at most 9 pages and as many text lines as a grid has rows. Pure.
std::optional<HelpEntry> read_help_entry(std::string_view text, int number, int line_length);

/// The text lines of a further page, whatever its header; nothing if the entry is missing or has none. Pure.
std::optional<std::vector<std::string>> read_help_page(std::string_view text, int number, int line_length);

/// What a help page needs of the screen that opens it.
struct HelpRequest {
    BITMAP* target = nullptr;        ///< screen picture, borrowed
    BITMAP* save = nullptr;          ///< keeps the picture under the page, borrowed
    SlotSet* messages = nullptr;     ///< message set, changed in memory
    const Slot* requester = nullptr; ///< slot whose help is wanted
    std::function<void()> every_frame;
};

/// Shows the help entry of a slot until the player closes it; returns the key code or the button's action that closed
/// it.
int show_help(const HelpRequest& request);

} // namespace vcc
