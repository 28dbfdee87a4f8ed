// Visits every slot of an installation's screens in the real program on a virtual desktop.
#pragma once

#include "vcckit/draw/render.h"
#include "vcckit/play/virtual_desktop.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vcc::kit {

/// The values that an option shows when pointed at or, for some, clicked, and what appears with them.
struct VisitedOption {
    int button = 0;
    bool by_click = false;
    std::vector<SeenSlot> values;
};

/// The positions of slots, from the program's own readers and drawing.
struct VisitPlan {
    SeenScreen menu, options;
    std::vector<VisitedOption> rows;
};

/// The plan for the installation in the working folder in a language.
Result<VisitPlan> plan_visit(std::size_t language);

/// Called at every stop with a word for its file and what the picture shows; false if it cannot be kept, which ends the
/// visit.
using KeepPicture = std::function<bool(const std::string& name, const std::string& text, const RgbPicture& picture)>;

struct Visited {
    bool reached_menu = false;
    std::vector<std::string> faults;
};

/// Plays the program that runs on the desktop, from the films or the menu, until it has left; stops early if a screen
/// does not appear.
Visited visit(VirtualDesktop& desktop, const VisitPlan& plan, bool films, const KeepPicture& keep);

} // namespace vcc::kit
