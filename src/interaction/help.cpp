#include "interaction/help.h"

#include "core/files.h"
#include "core/gamepad.h"
#include "core/installation.h"
#include "core/log.h"
#include "core/scope.h"
#include "core/text.h"
#include "display/buffers.h"
#include "interaction/help_file.h"
#include "interaction/keys.h"
#include "interaction/screen_run.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "screen/draw_text.h"
#include "screen/text_window.h"
#include "settings/settings.h"
#include "sound/sound.h"
#include "text/fonts.h"
#include "text/screen_texts.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace vcc {

namespace {

constexpr int slots_of_one_page = message_slot::last_line + 1; ///< buttons may be missing

void disable(Slot& slot) {
    hide(slot);
    slot.toggle = -1;
}

/// An open page. Closing it restores everything that it has changed outside the message set.
class HelpPage {
public:
    explicit HelpPage(const HelpRequest& request);
    ~HelpPage();
    HelpPage& operator=(HelpPage&&) = delete;

    int run();

private:
    Slot& slot(int index) { return run_.set->slots[static_cast<std::size_t>(index)]; }
    void prepare_slots();
    void enable(int index);
    void show_toggle(int index);
    void open();
    void open_entry();
    void draw_set();
    void show_message(int index, std::string_view text);
    void draw_lines(std::span<const std::string> lines);
    void save_picture();
    std::optional<int> handle(int code);
    std::optional<int> press(int index);
    void turn(int step);

    const HelpRequest& request_;
    TextWindow& window_;
    SwitchSet<int> window_colour_;
    SwitchSet<int> text_window_{current_text_window, 0};
    SwitchSet<int> full_redraw_{drawing.full_redraw};
    ScreenOwner owner_;
    ScreenRun run_;
    std::string file_; ///< the help file's bytes; empty when it is missing
    HelpEntry entry_;
    std::size_t page_ = 0;
};

HelpPage::HelpPage(const HelpRequest& request)
    : request_(request),
      window_(text_windows[static_cast<std::size_t>(request.messages->slots[message_slot::window].graphic)]),
      window_colour_(window_.colour) {
    owner_.every_frame = request.every_frame;
    run_.target = request.target;
    run_.set = request.messages;
    run_.owner = &owner_;
    // The whole picture, because texts and buttons may lie outside the window.
    blit(request.target, request.save, 0, 0, 0, 0, request.target->w, request.target->h);
    prepare_slots();
    open();
    update_screen(request.target);
}

HelpPage::~HelpPage() {
    slot(message_slot::window).draw_flags[0] = '\0';
    blit(request_.save, request_.target, 0, 0, 0, 0, request_.target->w, request_.target->h);
    update_screen(request_.target);
}

void HelpPage::show_toggle(int index) {
    if (Slot* const shown = run_.set->toggle(index))
        show(*shown);
}

void HelpPage::enable(int index) {
    if (!run_.set->has_slot(index))
        return;
    show(slot(index));
    slot(index).toggle = index;
    show_toggle(index);
    show_toggle(slot(index).activated);
}

void HelpPage::prepare_slots() {
    for (int line = message_slot::first_line; line <= message_slot::last_line; ++line)
        store_text(slot(line).text, {});
    for (int index = message_slot::first_button; index < run_.set->slot_count(); ++index) {
        disable(slot(index));
        if (Slot* const look = run_.set->toggle(index))
            disable(*look);
    }
    enable(message_slot::close);
}

/// Draws the whole set. Smoothed text drawn on it later must not restore the background of the screen below.
void HelpPage::draw_set() {
    run_.fields = draw_slot_set(run_.target, *run_.set);
    if (anti_aliased_text)
        drawing.full_redraw = 1;
}

void HelpPage::show_message(int index, std::string_view text) {
    Slot& line = slot(index);
    store_text(line.text, text);
    // A pixel position counts only when both coordinates are set.
    if (line.dest_y == 0)
        line.dest_y = std::max(row_y(line.font, line.row), 1);
    line.dest_x = layout_width / 2 - text_width(line.font, text) / 2;
    draw_set();
    hide(slot(message_slot::window));
}

void HelpPage::open() {
    if (anti_aliased_text)
        drawing.full_redraw = 1;
    if (request_.requester->help_number > 0) {
        if (auto bytes = read_file(text_of(request_.requester->help_file))) {
            file_ = std::move(*bytes);
            open_entry();
        } else {
            show_message(message_slot::missing_file, screen_text(screen_text_number::no_help_file));
        }
    }
    if (!entry_.complete)
        show_message(message_slot::missing_entry, screen_text(screen_text_number::no_help));
}

void HelpPage::open_entry() {
    const int number = request_.requester->help_number;
    auto found = gamepad_used && number < gamepad_help ? read_help_entry(file_, gamepad_help + number) : std::nullopt;
    if (!found)
        found = read_help_entry(file_, number);
    if (!found)
        return;
    entry_ = std::move(*found);
    if (entry_.pages.size() > 1 && run_.set->has_slot(message_slot::forward)) {
        show_toggle(message_slot::back);
        enable(message_slot::forward);
    }
    draw_set();
    window_.colour = entry_.window_colour;
    hide(slot(message_slot::window));
    if (sound_on && entry_.sound != 0)
        play_effect(entry_.sound);
    draw_lines(entry_.lines);
}

void HelpPage::draw_lines(std::span<const std::string> lines) {
    const FontSelection font(entry_.font);
    const int x = column_x(drawing.current_font, entry_.column);
    int row = std::clamp(entry_.row, 0, grid_row_limit);
    for (const std::string& line : lines) {
        const int y = row_y(drawing.current_font, row++);
        if (entry_.shadow_colour != 0)
            draw_text(run_.target, x + 1, y + 1, line, entry_.shadow_colour, false);
        draw_text(run_.target, x, y, line, entry_.text_colour, false);
    }
}

void HelpPage::save_picture() {
    if (save_pcx(path::help_picture, run_.target, buffer_palettes[screen_buffer]) != 0)
        write_log(format_text("Picture %s cannot be written", path::help_picture));
}

void HelpPage::turn(int step) {
    if (entry_.pages.size() < 2 || !run_.set->has_slot(message_slot::forward))
        return;
    const std::size_t last = entry_.pages.size() - 1;
    enable(message_slot::back);
    enable(message_slot::forward);
    page_ = step < 0 ? std::max<std::size_t>(page_, 1) - 1 : std::min(page_ + 1, last);
    if (page_ == 0)
        disable(slot(message_slot::back));
    if (page_ == last)
        disable(slot(message_slot::forward));
    draw_slots(run_.target, run_.set->slots);
    const auto lines = read_help_page(file_, entry_.pages[page_]);
    draw_lines(lines ? *lines : std::vector{std::string(screen_text(screen_text_number::no_help))});
    update_screen(run_.target);
}

std::optional<int> HelpPage::press(int index) {
    if (index != message_slot::back && index != message_slot::forward)
        return slot(index).action;
    turn(index == message_slot::back ? -1 : 1);
    return {};
}

/// Returns what closes the page, if the code does.
std::optional<int> HelpPage::handle(int code) {
    switch (code) {
    case key::f4:
    case key::shift_f4:
    case key::ctrl_f4:
        save_picture();
        return {};
    case key::step_back:
    case key::step_forward:
        turn(code == key::step_back ? -1 : 1);
        return {};
    case step_activated:
        return press(run_.current);
    case step_no_slot: // a message set without a button: keys close the page
        return handle(await_input(run_, slot(message_slot::window), true, false));
    case key::right_button:
        return key::escape;
    case 0:
    case key::escape:
    case key::f1:
    case key::alt_x:
        return code;
    default:
        carry_out_common_command(code);
        return {};
    }
}

int HelpPage::run() {
    for (;;)
        if (const auto result = handle(interaction_step(run_)))
            return *result;
}

std::string fault_of(const SlotSet& messages) {
    if (messages.slot_count() < slots_of_one_page)
        return format_text("Help page: the message set has %d slots, %d are needed", messages.slot_count(),
                           slots_of_one_page);
    const Slot& window = messages.slots[message_slot::window];
    if (!is_text_window(window) || window.graphic < 0 || window.graphic >= text_window_count)
        return "Help page: slot 0 of the message set does not name a text window";
    return {};
}

} // namespace

int show_help(const HelpRequest& request) {
    if (!request.target || !request.save)
        return key::escape;
    if (const std::string fault = fault_of(*request.messages); !fault.empty()) {
        write_log(fault);
        return key::escape;
    }
    const FontSelection keep_font(drawing.current_font);
    return HelpPage(request).run();
}

} // namespace vcc
