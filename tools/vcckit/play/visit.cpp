#include "vcckit/play/visit.h"

#include "vcckit/files/new_file.h"

#include "cc/option_rows.h"
#include "core/installation.h"
#include "core/log.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <thread>
#include <utility>

namespace vcc::kit {

namespace {

using std::chrono::steady_clock;

// Action codes of the slots clicked here.
constexpr int leave_action = 1, first_module_action = 2, last_module_action = 4, options_action = 5,
              first_selector_action = 31, last_selector_action = 34;
constexpr int ending_actions[] = {6, 30, 998}; ///< of the options screen: accept, cancel, back
constexpr int x_left_button = 1, x_right_button = 3;

constexpr std::chrono::milliseconds start_limit{60'000}, screen_limit{20'000}, change_limit{5000}, end_limit{20'000},
    settle_limit{1500}, still_time{120}, look_time{60}, look_interval{15};
constexpr std::chrono::milliseconds placed_time{500};  ///< a pass places the pointer and ignores it for a while
constexpr std::chrono::milliseconds module_time{1500}; ///< time to tear down the pass and load the library
constexpr std::chrono::milliseconds film_time{5000};
constexpr double same_screen = 0.95; ///< the rest may be the pointer, and what it shows

bool is_value(int slot) {
    return slot >= options_slot::first_value && slot < options_slot::first_value + 2 * options_slot::value_count;
}

/// A slot in a file name, and in a message.
std::string word_of(const std::string& screen, const SeenSlot& slot) {
    std::string word = format_text("%s-%02d-", screen.c_str(), slot.number);
    for (const char c : slot.name) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0 && byte < 0x80)
            word += static_cast<char>(std::tolower(byte));
        else if (!word.ends_with('-'))
            word += '-';
    }
    while (word.ends_with('-'))
        word.pop_back();
    return word;
}

std::string text_of_slot(const std::string& screen, const SeenSlot& slot) {
    return "slot " + std::to_string(slot.number) + " of the " + screen;
}

/// Visits the screens of one program.
class Visit {
public:
    Visit(VirtualDesktop& desktop, const VisitPlan& plan, const KeepPicture& keep)
        : desktop_(desktop), plan_(plan), keep_(keep) {}

    Visited run(bool films) {
        if (films)
            watch_films();
        visited_.reached_menu = arrive(plan_.menu.picture, "the main menu");
        if (visited_.reached_menu && visit_menu() && !is_over())
            leave();
        return std::move(visited_);
    }

private:
    bool wait_until(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
        const auto end = steady_clock::now() + limit;
        while (!condition()) {
            if (steady_clock::now() > end || is_over())
                return false;
            std::this_thread::sleep_for(look_interval);
        }
        return true;
    }

    /// The picture once it no longer changes, or after a while.
    RgbPicture settled() {
        RgbPicture last = desktop_.look();
        auto since = steady_clock::now();
        wait_until(
            [&] {
                RgbPicture now = desktop_.look();
                if (now != last) {
                    last = std::move(now);
                    since = steady_clock::now();
                }
                return steady_clock::now() - since >= still_time;
            },
            settle_limit);
        return last;
    }

    RgbPicture keep(const std::string& name, const std::string& text, RgbPicture picture) {
        kept_ = keep_(name, text, picture) && kept_;
        return picture;
    }

    RgbPicture stop(const std::string& name, const std::string& text) { return keep(name, text, settled()); }

    void fault(const std::string& text) {
        visited_.faults.push_back(text);
        keep("fault", text, desktop_.look());
    }

    bool is_over() const { return interrupted() || !kept_; }

    bool shows(const RgbPicture& picture) { return share_alike(desktop_.look(), picture) >= same_screen; }

    void park_pointer() { desktop_.move(layout_width - 1, layout_height - 1); }

    void point_at(const SeenSlot& slot) {
        desktop_.move(slot.x, slot.y);
        std::this_thread::sleep_for(look_time);
    }

    void click(const SeenSlot& slot) {
        point_at(slot);
        desktop_.click(x_left_button);
    }

    /// Waits for a screen, with the pointer out of the way.
    bool arrive(const RgbPicture& wanted, const std::string& what) {
        const bool there = wait_until([&] { return !desktop_.running() || shows(wanted); },
                                      visited_.reached_menu ? screen_limit : start_limit);
        if (!there || !desktop_.running()) {
            fault(what + (desktop_.running() ? " does not appear" : " does not appear: the program has ended"));
            return false;
        }
        std::this_thread::sleep_for(placed_time);
        park_pointer();
        return true;
    }

    void watch_films() {
        wait_until([&] { return desktop_.look().width > 0 || !desktop_.running(); }, start_limit);
        for (const Film& film : vcc::films) {
            std::this_thread::sleep_for(film_time);
            keep("film", film.path, desktop_.look());
            desktop_.press_key("space");
        }
    }

    bool visit_menu() {
        stop("menu", "the main menu");
        for (const SeenSlot& slot : plan_.menu.slots)
            visit_slot("menu", slot);
        for (const SeenSlot& slot : plan_.menu.slots) {
            const bool module = slot.action >= first_module_action && slot.action <= last_module_action;
            const bool options = slot.action == options_action;
            if (is_over() || (module && !visit_module(slot)) || (options && !visit_options(slot)))
                return false;
            if (!module && !options && slot.action != leave_action)
                click_idle(slot);
        }
        return true;
    }

    /// A button of the menu that leads nowhere: the menu stays as it is.
    void click_idle(const SeenSlot& slot) {
        point_at(slot);
        const RgbPicture before = settled();
        desktop_.click(x_left_button);
        stop(word_of("menu", slot) + "-clicked", "clicked");
        if (share_alike(desktop_.look(), before) < 1)
            fault(text_of_slot("menu", slot) + ": a click leaves something in the picture");
    }

    void visit_slot(const std::string& screen, const SeenSlot& slot) {
        if (is_over() || !desktop_.running())
            return;
        point_at(slot);
        const RgbPicture shown = stop(word_of(screen, slot), text_of_slot(screen, slot));
        if (slot.help_number > 0)
            visit_help(screen, slot, shown);
    }

    void visit_help(const std::string& screen, const SeenSlot& slot, const RgbPicture& before) {
        desktop_.press_key("F1");
        if (!wait_until([&] { return !shows(before); }, change_limit)) {
            fault(text_of_slot(screen, slot) + ": F1 does not open a page");
            return;
        }
        stop(word_of(screen, slot) + "-help", "its help page");
        desktop_.press_key("Escape");
        if (!wait_until([&] { return shows(before); }, change_limit))
            fault(text_of_slot(screen, slot) + ": Escape does not close its help page");
    }

    bool visit_module(const SeenSlot& button) {
        const std::string name = module_names[static_cast<std::size_t>(button.action - first_module_action)];
        click(button);
        if (!wait_until([&] { return !shows(plan_.menu.picture); }, change_limit))
            fault(text_of_slot("menu", button) + ": a click does not enter " + name);
        std::this_thread::sleep_for(module_time);
        stop("module-" + name, "the module " + name);
        desktop_.press_key("Escape");
        return arrive(plan_.menu.picture, "the main menu after the module " + name);
    }

    bool enter_options(const SeenSlot& button) {
        click(button);
        std::this_thread::sleep_for(look_time);
        park_pointer();
        return arrive(plan_.options.picture, "the options screen");
    }

    bool visit_options(const SeenSlot& button) {
        if (!enter_options(button))
            return false;
        stop("options", "the options screen");
        for (const SeenSlot& slot : plan_.options.slots) {
            visit_slot("options", slot);
            if (slot.action >= first_selector_action && slot.action <= last_selector_action) {
                click(slot);
                stop(word_of("options", slot) + "-chosen", "chosen");
            }
            const auto row = std::ranges::find(plan_.rows, slot.number, &VisitedOption::button);
            if (row != plan_.rows.end())
                visit_values(*row);
        }
        desktop_.press_key("Escape");
        return arrive(plan_.menu.picture, "the main menu after the options screen") && click_endings(button);
    }

    /// Every button that ends the options screen.
    bool click_endings(const SeenSlot& button) {
        for (const SeenSlot& slot : plan_.options.slots) {
            if (std::ranges::find(ending_actions, slot.action) == std::end(ending_actions))
                continue;
            if (is_over() || !enter_options(button))
                return false;
            click(slot);
            if (!arrive(plan_.menu.picture, "the main menu after " + text_of_slot("options", slot)))
                return false;
        }
        return true;
    }

    void visit_values(const VisitedOption& row) {
        const auto button = std::ranges::find(plan_.options.slots, row.button, &SeenSlot::number);
        point_at(*button);
        if (row.by_click) { // one step forward and one back
            desktop_.click(x_left_button);
            desktop_.click(x_right_button);
        }
        for (const SeenSlot& value : row.values) {
            if (is_over() || !desktop_.running())
                return;
            point_at(value);
            stop(word_of(word_of("options", *button) + "-value", value),
                 "a value of slot " + std::to_string(row.button));
        }
    }

    void leave() {
        const auto button = std::ranges::find(plan_.menu.slots, leave_action, &SeenSlot::action);
        if (button == plan_.menu.slots.end()) {
            fault("no slot of the menu leaves the program");
            return;
        }
        click(*button);
        if (!wait_until([&] { return !desktop_.running(); }, end_limit))
            fault(text_of_slot("menu", *button) + ": a click does not leave the program");
        else if (const int status = desktop_.exit_status().value_or(0); status != 0)
            fault("the program leaves with status " + std::to_string(status));
    }

    VirtualDesktop& desktop_;
    const VisitPlan& plan_;
    const KeepPicture& keep_;
    Visited visited_;
    bool kept_ = true; ///< all pictures so far
};

} // namespace

Result<VisitPlan> plan_visit(std::size_t language) {
    RenderRequest request;
    request.language = language;
    Renderer renderer;
    auto menu = renderer.see(request);
    request.screen = RenderedScreen::options;
    auto options = menu ? renderer.see(request) : menu;
    if (!options)
        return Failure{options.reason()};
    VisitPlan plan{std::move(*menu), std::move(*options), {}};
    std::erase_if(plan.options.slots, [](const SeenSlot& slot) { return is_value(slot.number); });
    const auto always_there = [&](const SeenSlot& slot) {
        return std::ranges::find(plan.options.slots, slot.number, &SeenSlot::number) != plan.options.slots.end();
    };
    for (const OptionRow& row : option_rows()) {
        request.row = static_cast<int>(row.row);
        auto shown = renderer.see(request);
        if (!shown)
            return Failure{shown.reason()};
        std::erase_if(shown->slots, always_there);
        plan.rows.push_back({row.button, !row.rules.shown_when_pointed_at, std::move(shown->slots)});
    }
    return plan;
}

Visited visit(VirtualDesktop& desktop, const VisitPlan& plan, bool films, const KeepPicture& keep) {
    return Visit(desktop, plan, keep).run(films);
}

} // namespace vcc::kit
