#include "vcckit/source/short_source.h"

#include "vcckit/source/record_lines.h"
#include "vcckit/source/style_finder.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>

namespace vcc::kit {

namespace {

constexpr std::size_t longest_step = 8; ///< between the records of a repetition

/// A slot and its looks, which are stored as changes to the slot, so that a row of slots shares them.
struct Described {
    Versions slot{};
    std::optional<Lines> highlight, pressed;
    bool states_toggle = false; ///< its toggle is not the default of a highlight
};

/// Records that one table describes.
struct Run {
    std::size_t first = 0, count = 1, step = 1;

    std::size_t at(std::size_t number) const { return first + number * step; }
};

class ShortSource {
public:
    explicit ShortSource(const Screen& packed) : screen_(packed) {}

    std::string write() {
        describe_slots();
        for (std::size_t i = 0; i < slots_.size(); ++i)
            if (slots_[i] && !done_.contains(i))
                add_run(longest_run(i));
        add_toggles();
        const std::vector<Style> styles = find_styles(entries_);
        std::string out;
        for (const Style& style : styles)
            out += "\n[style." + style.name + "]\n" + text_of(style.lines);
        for (const Entry& entry : entries_) {
            out += "\n" + entry.heading + "\n" + text_of(entry.own);
            if (!entry.styles.empty())
                out += "style = " + style_text(entry.styles) + "\n";
            out += text_of(entry.lines);
        }
        return out;
    }

private:
    static std::string style_text(const std::vector<std::string>& styles) {
        if (styles.size() == 1)
            return "\"" + styles[0] + "\"";
        std::string text = "[";
        for (const std::string& style : styles)
            text += (&style == &styles.front() ? "\"" : ", \"") + style + "\"";
        return text + "]";
    }

    std::size_t slot_count() const { return screen_.records[0].slots.size(); }
    std::size_t toggle_count() const { return screen_.records[0].toggles.size(); }

    Versions slot_at(std::size_t index) const { return record_at(screen_, &ScreenRecords::slots, index); }
    Versions toggle_at(std::size_t index) const { return record_at(screen_, &ScreenRecords::toggles, index); }

    void describe_slots() {
        slots_.resize(slot_count());
        for (std::size_t i = 0; i < slot_count(); ++i) {
            const Versions slot = slot_at(i);
            if (is_gap(slot) && i + 1 < slot_count())
                continue;
            slots_[i] = Described{slot, {}, {}, true};
            if (i < toggle_count() && !is_gap(toggle_at(i))) {
                slots_[i]->highlight = changes(toggle_at(i), slot);
                looks_.insert(i);
                slots_[i]->states_toggle = std::ranges::any_of(
                    slot, [i](const Slot& each) { return each.toggle != static_cast<std::int32_t>(i); });
            }
        }
        // Pressed looks are records that no slot uses as highlight.
        for (auto& described : slots_) {
            if (!described)
                continue;
            const std::int32_t activated = described->slot[0].activated;
            const bool one = std::ranges::all_of(described->slot,
                                                 [activated](const Slot& slot) { return slot.activated == activated; });
            const auto index = static_cast<std::size_t>(activated);
            if (!one || activated <= 0 || index >= toggle_count() || is_gap(toggle_at(index)) ||
                !looks_.insert(index).second)
                continue;
            described->pressed = changes(toggle_at(index), described->slot);
        }
    }

    /// Slots of a row differ in position and in numbers that count up; other differences are coincidence.
    static bool may_step(const Field& field, std::int64_t step) {
        constexpr std::int32_t Slot::*places[] = {&Slot::column,    &Slot::row,        &Slot::dest_x, &Slot::dest_y,
                                                  &Slot::box_width, &Slot::box_height, &Slot::src_x,  &Slot::src_y};
        constexpr std::int32_t Slot::*counts[] = {&Slot::action, &Slot::activated, &Slot::help_number};
        return step == 0 || std::ranges::find(places, field.member) != std::end(places) ||
               (step == 1 && std::ranges::find(counts, field.member) != std::end(counts));
    }

    /// Whether the run can have one record more.
    bool continues(const Run& run) const {
        const std::size_t at = run.at(run.count);
        if (at >= slots_.size() || !slots_[at] || done_.contains(at))
            return false;
        const Described &a = *slots_[run.first], &second = *slots_[run.at(1)], &b = *slots_[at];
        if (kind_of(a.slot[0]) != kind_of(b.slot[0]) || a.highlight != b.highlight || a.pressed != b.pressed ||
            a.states_toggle != b.states_toggle)
            return false;
        for (const Field& field : number_fields()) {
            if (field.member == &Slot::toggle && !a.states_toggle)
                continue;
            for (std::size_t i = 0; i < languages.size(); ++i) {
                const std::int64_t value = a.slot[i].*field.member;
                const std::int64_t each = second.slot[i].*field.member - value;
                const std::int64_t of_first_language =
                    std::int64_t{second.slot[0].*field.member} - a.slot[0].*field.member;
                if (each != of_first_language || !may_step(field, each) ||
                    b.slot[i].*field.member != value + each * static_cast<std::int64_t>(run.count))
                    return false;
            }
        }
        return true;
    }

    Run longest_run(std::size_t first) const {
        Run best{first};
        for (std::size_t step = 1; step <= longest_step; ++step) {
            Run run{first, 1, step};
            if (run.at(1) < slots_.size() && slots_[run.at(1)])
                while (continues(run))
                    ++run.count;
            if (run.count > best.count)
                best = run;
        }
        return best;
    }

    /// The texts of a run in a list; empty if they are all the same.
    std::string text_list(const Run& run, const Field& field) const {
        const std::string first = field_text(field, slots_[run.first]->slot);
        std::string list = "[" + first;
        bool differs = false;
        for (std::size_t i = 1; i < run.count; ++i) {
            const std::string text = field_text(field, slots_[run.at(i)]->slot);
            differs = differs || text != first;
            list += ", " + text;
        }
        return differs ? list + "]" : "";
    }

    Line repeat_line(const Run& run) const {
        Lines steps{{"count", std::to_string(run.count)}};
        if (run.step != 1)
            steps.push_back({"step", std::to_string(run.step)});
        const Versions &a = slots_[run.first]->slot, &b = slots_[run.at(1)]->slot;
        for (const Field& field : number_fields()) {
            if (field.member == &Slot::toggle && !slots_[run.first]->states_toggle)
                continue;
            if (const std::int64_t each = std::int64_t{b[0].*field.member} - a[0].*field.member; each != 0)
                steps.push_back({std::string(field.name), std::to_string(each)});
        }
        return {"repeat", inline_table(steps)};
    }

    static std::string kind_of(const Slot& slot) {
        if (slot.graphic != 0)
            return is_text_window(slot) ? "window" : slot.action != 0 ? "button" : "picture";
        if (slot.input_mode != 0)
            return "field";
        return slot.toggle == -1 ? "label" : slot.action != 0 ? "option" : "text";
    }

    /// The letters of draw_flags by their names, if that is all they contain.
    static void name_flags(const Versions& slot, Lines& lines) {
        const auto line = std::ranges::find(lines, "draw_flags", &Line::key);
        if (line == lines.end())
            return;
        Slot made = empty_slot();
        Lines flags;
        for (const Field& field : source_fields()) {
            if (field.letter == '\0' || slot[0].draw_flags[field.position] != field.letter)
                continue;
            for (std::size_t i = 0; i < field.position; ++i)
                made.draw_flags[i] = made.draw_flags[i] == '\0' ? ' ' : made.draw_flags[i];
            made.draw_flags[field.position] = field.letter;
            flags.push_back({std::string(field.name), "true"});
        }
        const auto is_made = [&](const Slot& each) {
            return std::equal(std::begin(each.draw_flags), std::end(each.draw_flags), std::begin(made.draw_flags));
        };
        if (std::ranges::all_of(slot, is_made))
            lines.insert(lines.erase(line), flags.begin(), flags.end());
    }

    void add_run(const Run& run) {
        const Described& first = *slots_[run.first];
        Entry entry{"[[slot]]", kind_of(first.slot[0]), {{"index", std::to_string(run.first)}}, {}, {}};
        if (run.count > 1)
            entry.own.push_back(repeat_line(run));
        entry.lines = changes(first.slot, everywhere(empty_slot()));
        name_flags(first.slot, entry.lines);
        if (!first.states_toggle)
            std::erase_if(entry.lines, [](const Line& line) { return line.key == "toggle"; });
        else if (first.highlight && std::ranges::find(entry.lines, "toggle", &Line::key) == entry.lines.end())
            entry.lines.push_back({"toggle", "\"inert\""}); // or the highlight would bring its own
        for (const Field& field : text_fields())
            if (std::string list = text_list(run, field); !list.empty()) {
                std::erase_if(entry.lines, [&](const Line& line) { return line.key == field.name; });
                entry.lines.push_back({std::string(field.name), std::move(list)});
            }
        std::ranges::stable_sort(entry.lines, {}, [](const Line& line) { return line.key == "name" ? 0 : 1; });
        if (first.highlight)
            entry.lines.push_back({"highlight", inline_table(*first.highlight)});
        if (first.pressed)
            entry.lines.push_back({"pressed", inline_table(*first.pressed)});
        for (std::size_t i = 0; i < run.count; ++i)
            done_.insert(run.at(i));
        entries_.push_back(std::move(entry));
    }

    void add_toggles() {
        for (std::size_t i = 0; i < toggle_count(); ++i) {
            const Versions toggle = toggle_at(i);
            if (looks_.contains(i) || (is_gap(toggle) && i + 1 < toggle_count()))
                continue;
            entries_.push_back(
                {"[[toggle]]", "look", {{"index", std::to_string(i)}}, changes(toggle, everywhere(empty_slot())), {}});
        }
    }

    const Screen& screen_;
    std::vector<std::optional<Described>> slots_;
    std::set<std::size_t> looks_, done_; ///< toggle records described by slots; slots already written
    std::vector<Entry> entries_;
};

} // namespace

std::string short_source(const Screen& screen) {
    return ShortSource(screen).write();
}

} // namespace vcc::kit
