// Visits every slot of an installation's screens in the real program on a virtual desktop.
#pragma once

#include "vcckit/draw/render.h"
#include "vcckit/play/virtual_desktop.h"

#include "text/fonts.h"

#include <chrono>
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

/// The plan for the installation in the working folder in a language; nothing with the reason in `fault`.
std::optional<VisitPlan> plan_visit(std::size_t language, std::string& fault);

class Visit {
public:
    /// Called at every stop with a word for its file and what the picture shows; false if it cannot be kept, which ends
    /// the visit.
    using Keep = std::function<bool(const std::string& name, const std::string& text, const RgbPicture& picture)>;

    /// `desktop` runs the program.
    Visit(VirtualDesktop& desktop, const VisitPlan& plan, Keep keep)
        : desktop_(desktop), plan_(plan), keep_(std::move(keep)) {}

    /// Plays from the films or the menu until the program has left; stops early if a screen does not appear.
    void run(bool films);

    /// Whether the menu has appeared.
    bool reached_menu() const { return reached_menu_; }
    const std::vector<std::string>& faults() const { return faults_; }

private:
    using Milliseconds = std::chrono::milliseconds;

    void watch_films();
    bool visit_menu();
    bool visit_module(const SeenSlot& button);
    bool visit_options(const SeenSlot& button);
    bool enter_options(const SeenSlot& button);
    bool click_endings(const SeenSlot& button);
    void click_idle(const SeenSlot& slot);
    void visit_slot(const std::string& screen, const SeenSlot& slot);
    void visit_help(const std::string& screen, const SeenSlot& slot, const RgbPicture& before);
    void visit_values(const VisitedOption& row);
    void leave();

    RgbPicture stop(const std::string& name, const std::string& text);
    void point_at(const SeenSlot& slot);
    RgbPicture settled();
    bool arrive(const RgbPicture& wanted, const std::string& what);
    bool wait_until(const std::function<bool()>& condition, Milliseconds limit);
    void fault(const std::string& text);
    bool is_over() const;

    VirtualDesktop& desktop_;
    const VisitPlan& plan_;
    Keep keep_;
    std::vector<std::string> faults_;
    bool reached_menu_ = false;
    bool kept_ = true; ///< all pictures so far
};

} // namespace vcc::kit
