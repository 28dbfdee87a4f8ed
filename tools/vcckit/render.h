// The pictures that the program shows, drawn by the program itself, without a display.
#pragma once

#include "rgb_picture.h"

#include "core/handles.h"

#include <optional>
#include <string>
#include <vector>

namespace vcc::kit {

enum class RenderedScreen { menu, options, help, message };

struct RenderRequest {
    RenderedScreen screen = RenderedScreen::menu;
    std::size_t language = 0;  ///< index of `languages`
    std::optional<int> row;    ///< options: the option whose values are shown
    std::optional<int> module; ///< options: the module whose sound is shown, 0 to 3
    std::optional<int> hover;  ///< slot under the pointer; help: the slot that the help is about
    int depth = 32;            ///< bits: 15, 16, 24 or 32
};

/// The picture of 800 x 600, or null with the reason in `fault`. The working folder is the installation; the graphics
/// library must run in the request's depth.
BitmapPtr render_screen(const RenderRequest& request, std::string& fault);

RgbPicture rgb_of(BITMAP& bitmap);

/// A slot that a player can choose.
struct SeenSlot {
    int number = 0;
    int x = 0, y = 0; ///< a place in it, pixels
    int action = 0, help_number = 0;
    std::string name; ///< its text, or its name in the source; Windows Latin-1
};

/// What a player has before them.
struct SeenScreen {
    RgbPicture picture;
    std::vector<SeenSlot> slots;
};

/// The picture of a request, and the slots that can be chosen in it: those of the menu, or of the options screen with
/// the values of the request's row. As render_screen().
std::optional<SeenScreen> see_screen(const RenderRequest& request, std::string& fault);

} // namespace vcc::kit
