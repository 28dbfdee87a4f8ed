// The pictures that the program shows, drawn by the program itself, without a display.
#pragma once

#include "core/handles.h"

#include <optional>
#include <string>

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

/// A picture as a PNG file of 8 bits per colour; empty when there is no memory for it.
std::string png_bytes(BITMAP& picture);

} // namespace vcc::kit
