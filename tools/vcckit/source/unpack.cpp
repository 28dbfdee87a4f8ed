#include "vcckit/source/unpack.h"

#include "vcckit/record/fields.h"
#include "vcckit/source/record_lines.h"
#include "vcckit/source/style_finder.h"
#include "vcckit/text/latin1.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>

namespace vcc::kit {

namespace {

constexpr std::size_t longest_step = 8; ///< between the records of a repetition

using Records = std::vector<Versions>;

Records records_of(const Screen& screen, std::vector<Slot> ScreenRecords::*set) {
    Records records((screen.records[0].*set).size());
    for (std::size_t i = 0; i < records.size(); ++i)
        std::ranges::transform(screen.records, records[i].begin(), [&](const auto& each) { return (each.*set)[i]; });
    return records;
}

/// A gap is not described, but for the last record, whose number says how many there are.
bool is_left_out(const Records& records, std::size_t index) {
    return is_gap(records[index]) && index + 1 < records.size();
}

/// The name of a style for such slots.
std::string kind_of(const Slot& slot) {
    if (slot.graphic != 0)
        return is_text_window(slot) ? "window" : slot.action != 0 ? "button" : "picture";
    if (slot.input_mode != 0)
        return "field";
    return slot.toggle == -1 ? "label" : slot.action != 0 ? "option" : "text";
}

/// "[1, 2]"
std::string list_of(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values)
        text += (text.empty() ? "[" : ", ") + value;
    return text + "]";
}

/// What the slots of a row share. Looks are stored as changes to the slot.
struct Shared {
    std::string kind;
    std::optional<Lines> highlight, pressed;
    bool states_toggle = true; ///< its toggle is not the default of a highlight

    bool operator==(const Shared&) const = default;
};

struct Described {
    Versions slot; ///< inert if the toggle is not stated
    Shared shared;
};

/// Records that one table describes.
struct Run {
    std::size_t first = 0, count = 1, step = 1;

    std::size_t at(std::size_t number) const { return first + number * step; }
};

/// Writes as a person would: with looks, repeated records and styles.
class ShortSource {
public:
    ShortSource(const Records& slots, const Records& toggles) : toggles_(toggles) { describe(slots); }

    std::string write() {
        for (std::size_t i = 0; i < slots_.size(); ++i)
            if (slots_[i] && !done_.contains(i))
                add_run(longest_run(i));
        add_toggles();
        std::string out;
        for (const Style& style : find_styles(entries_))
            out += "\n[style." + style.name + "]\n" + text_of(style.lines);
        for (const Entry& entry : entries_) {
            out += "\n" + entry.heading + "\n" + text_of(entry.own);
            if (!entry.styles.empty())
                out += "style = " + (entry.styles.size() == 1 ? entry.styles[0] : list_of(entry.styles)) + "\n";
            out += text_of(entry.lines);
        }
        return out;
    }

private:
    void describe(const Records& slots) {
        slots_.resize(slots.size());
        for (std::size_t i = 0; i < slots.size(); ++i) {
            if (is_left_out(slots, i))
                continue;
            Shared& shared = slots_[i].emplace(Described{slots[i], {kind_of(slots[i][0]), {}, {}}}).shared;
            if (i >= toggles_.size() || is_gap(toggles_[i]))
                continue;
            shared.highlight = changes(toggles_[i], slots[i]);
            shared.states_toggle = !all_have(slots[i], &Slot::toggle, static_cast<std::int32_t>(i));
            looks_.insert(i);
        }
        // Pressed looks are records that no slot uses as highlight.
        for (auto& described : slots_) {
            if (!described)
                continue;
            auto& [slot, shared] = *described;
            const std::int32_t activated = slot[0].activated;
            const auto index = static_cast<std::size_t>(activated);
            if (activated > 0 && all_have(slot, &Slot::activated, activated) && index < toggles_.size() &&
                !is_gap(toggles_[index]) && looks_.insert(index).second)
                shared.pressed = changes(toggles_[index], slot);
            for (Slot& each : slot)
                each.toggle = shared.states_toggle ? each.toggle : empty_slot().toggle;
        }
    }

    static bool all_have(const Versions& slot, std::int32_t Slot::*member, std::int32_t value) {
        return std::ranges::count(slot, value, member) == std::ssize(slot);
    }

    /// Slots of a row differ in position and in numbers that count up; other differences are coincidence.
    static bool may_step(const Field& field, std::int64_t step) {
        constexpr std::int32_t Slot::*places[] = {&Slot::column,    &Slot::row,        &Slot::dest_x, &Slot::dest_y,
                                                  &Slot::box_width, &Slot::box_height, &Slot::src_x,  &Slot::src_y};
        constexpr std::int32_t Slot::*counts[] = {&Slot::action, &Slot::activated, &Slot::help_number};
        return step == 0 || std::ranges::find(places, field.member) != std::end(places) ||
               (step == 1 && std::ranges::find(counts, field.member) != std::end(counts));
    }

    /// From the first record of a run to the second.
    std::int64_t step_of(const Run& run, const Field& field) const {
        return std::int64_t{slots_[run.at(1)]->slot[0].*field.member} - slots_[run.first]->slot[0].*field.member;
    }

    /// Whether the run can have one record more.
    bool continues(const Run& run) const {
        const std::size_t at = run.at(run.count);
        if (at >= slots_.size() || !slots_[at] || done_.contains(at))
            return false;
        const Described &first = *slots_[run.first], &next = *slots_[at];
        return first.shared == next.shared && std::ranges::all_of(number_fields(), [&](const Field& field) {
                   const std::int64_t step = step_of(run, field);
                   return may_step(field, step) &&
                          std::ranges::equal(first.slot, next.slot, [&](const Slot& a, const Slot& b) {
                              return b.*field.member == a.*field.member + step * std::int64_t(run.count);
                          });
               });
    }

    Run longest_run(std::size_t first) const {
        Run best{first};
        for (std::size_t step = 1; step <= longest_step; ++step) {
            Run run{first, 1, step};
            while (continues(run))
                ++run.count;
            if (run.count > best.count)
                best = run;
        }
        return best;
    }

    Line repeat_line(const Run& run) const {
        Lines steps{{"count", std::to_string(run.count)}};
        if (run.step != 1)
            steps.push_back({"step", std::to_string(run.step)});
        for (const Field& field : number_fields())
            if (const std::int64_t step = step_of(run, field); step != 0)
                steps.push_back({std::string(field.name), std::to_string(step)});
        return {"repeat", inline_table(steps)};
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
            std::replace(made.draw_flags, made.draw_flags + field.position, '\0', ' ');
            made.draw_flags[field.position] = field.letter;
            flags.push_back({std::string(field.name), "true"});
        }
        if (std::ranges::all_of(slot,
                                [&](const Slot& each) { return std::ranges::equal(each.draw_flags, made.draw_flags); }))
            lines.insert(lines.erase(line), flags.begin(), flags.end());
    }

    void add_run(const Run& run) {
        const auto& [slot, shared] = *slots_[run.first];
        Entry entry{"[[slot]]", shared.kind, {{"index", std::to_string(run.first)}}, {}, {}};
        if (run.count > 1)
            entry.own.push_back(repeat_line(run));
        entry.lines = changes(slot);
        name_flags(slot, entry.lines);
        if (shared.highlight && shared.states_toggle &&
            std::ranges::find(entry.lines, "toggle", &Line::key) == entry.lines.end())
            entry.lines.push_back({"toggle", "\"inert\""}); // or the highlight would bring its own
        for (const Field& field : text_fields()) {
            std::vector<std::string> texts;
            for (std::size_t i = 0; i < run.count; ++i)
                texts.push_back(field_text(field, slots_[run.at(i)]->slot));
            if (std::ranges::count(texts, texts.front()) == std::ssize(texts))
                continue;
            std::erase_if(entry.lines, [&](const Line& line) { return line.key == field.name; });
            entry.lines.push_back({std::string(field.name), list_of(texts)});
        }
        std::ranges::stable_sort(entry.lines, {}, [](const Line& line) { return line.key == "name" ? 0 : 1; });
        if (shared.highlight)
            entry.lines.push_back({"highlight", inline_table(*shared.highlight)});
        if (shared.pressed)
            entry.lines.push_back({"pressed", inline_table(*shared.pressed)});
        for (std::size_t i = 0; i < run.count; ++i)
            done_.insert(run.at(i));
        entries_.push_back(std::move(entry));
    }

    void add_toggles() {
        for (std::size_t i = 0; i < toggles_.size(); ++i)
            if (!looks_.contains(i) && !is_left_out(toggles_, i))
                entries_.push_back({"[[toggle]]", "look", {{"index", std::to_string(i)}}, changes(toggles_[i]), {}});
    }

    const Records& toggles_;
    std::vector<std::optional<Described>> slots_;
    std::set<std::size_t> looks_, done_; ///< toggle records described by slots; slots already written
    std::vector<Entry> entries_;
};

/// One table per record, without styles and repetitions, describes any record. `models`: slots to begin as.
std::string plain_tables(const std::string& heading, const Records& records, const Records& models = {}) {
    std::string out;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (is_left_out(records, i))
            continue;
        Lines lines = changes(records[i]);
        // Gaps are not described, so they cannot be copied.
        if (i < models.size() && !is_gap(models[i]))
            if (Lines shorter = changes(records[i], models[i]); shorter.size() < lines.size()) {
                lines = std::move(shorter);
                lines.insert(lines.begin(), {"copy", std::to_string(i)});
            }
        out += "\n[[" + heading + "]]\nindex = " + std::to_string(i) + "\n" + text_of(lines);
    }
    return out;
}

std::string heading_of(const Screen& screen) {
    std::string out;
    if (!screen.name.empty())
        out += "name = " + *quoted_text(screen.name) + "\n";
    if (screen.language)
        out += "language = " + *quoted_text(languages[*screen.language].code) + "\n";
    const ScreenRecords& first = screen.records[0];
    if (first.has_toggle_file && first.toggles.empty())
        out += "toggle_count = 0\n";
    return out;
}

} // namespace

std::string difference_of_structure(const Screen& screen) {
    const ScreenRecords& first = screen.records[0];
    for (const ScreenRecords& other : screen.records) {
        if (other.slots.size() != first.slots.size())
            return "the languages have " + std::to_string(first.slots.size()) + " and " +
                   std::to_string(other.slots.size()) + " slots";
        if (other.toggles.size() != first.toggles.size() || other.has_toggle_file != first.has_toggle_file)
            return "the languages have " + std::to_string(first.toggles.size()) + " and " +
                   std::to_string(other.toggles.size()) + " toggle records, or one has no toggle file";
    }
    return {};
}

bool describes(std::string_view source, const Screen& screen, const TextMeasure& measure) {
    const ScreenSource read = read_screen_source(source, measure);
    if (!read.faults.empty() || (read.screen.language && read.screen.language != screen.language))
        return false;
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const ScreenRecords &a = read.screen.records[i], &b = screen.records[i];
        if (!screen.describes(i))
            continue;
        if (slot_file_bytes(a.slots) != slot_file_bytes(b.slots) || a.has_toggle_file != b.has_toggle_file ||
            slot_file_bytes(a.toggles) != slot_file_bytes(b.toggles))
            return false;
    }
    return true;
}

std::string write_screen_source(const Screen& screen) {
    const std::string heading = heading_of(screen);
    const Records slots = records_of(screen, &ScreenRecords::slots),
                  toggles = records_of(screen, &ScreenRecords::toggles);
    std::string source = heading + ShortSource(slots, toggles).write();
    if (describes(source, screen))
        return source;
    return heading + plain_tables("slot", slots) + plain_tables("toggle", toggles, slots);
}

} // namespace vcc::kit
