#include "vcckit/serve/document_json.h"

#include "vcckit/check/fixed_slots.h"
#include "vcckit/edit/document_kinds.h"
#include "vcckit/faults/fault_codes.h"
#include "vcckit/record/fields.h"
#include "vcckit/text/latin1.h"
#include "vcckit/text/lines.h"

#include "core/text.h"
#include "interaction/focus.h"
#include "platform/latin1.h"
#include "screen/draw_slot.h"
#include "text/fonts.h"

#include <algorithm>
#include <charconv>

namespace vcc::kit::edit {

using nlohmann::json;
using platform::utf8_from_latin1;

namespace {

json rect_json(int x1, int y1, int x2, int y2) {
    return json::array({x1, y1, x2 - x1, y2 - y1});
}

json rect_of_window(const TextWindow& window) {
    if (window.pixel_coords != 0)
        return rect_json(window.left, window.top, window.right, window.bottom);
    return rect_json(column_x(window.font, window.left), row_y(window.font, window.top),
                     column_x(window.font, window.right), row_y(window.font, window.bottom));
}

const char* kind_of(const Slot& slot) {
    if (is_text_window(slot))
        return "window";
    if (slot.graphic != 0)
        return "picture";
    return slot.input_mode != 0 || !text_of(slot.text).empty() || slot.box_width != 0 ? "text" : "other";
}

/// The name that a source would write for a number: one of its own first.
std::optional<std::string> shown_number(Meaning meaning, std::int32_t number, const SourceNames& names) {
    for (const auto& [name, value] : names)
        if (name.first == meaning && value == number)
            return name.second;
    return name_of_number(meaning, number);
}

json record_json(const Slot& slot, const SourceNames& names, const std::array<TextWindow, text_window_count>& windows) {
    json values = json::object(), shown = json::object();
    for (const Field& field : number_fields()) {
        values[std::string(field.name)] = slot.*field.member;
        if (field.meaning != Meaning::number)
            if (const auto name = shown_number(field.meaning, slot.*field.member, names))
                shown[std::string(field.name)] = *name;
    }
    for (const Field& field : text_fields())
        values[std::string(field.name)] =
            utf8_from_latin1(bytes_of(slot, field).substr(0, bytes_of(slot, field).find('\0')));
    const Rect area = slot_rect(slot);
    json frame = rect_json(area.x1, area.y1, area.x2, area.y2);
    const bool boxed = slot.graphic == 0 && slot.box_width != 0 && slot.box_height != 0;
    if (boxed) // what is seen and resized, not what is pointed at
        frame = json::array({slot_position(slot).x, slot_position(slot).y, slot.box_width, slot.box_height});
    if (is_text_window(slot) && slot.graphic > 0 && slot.graphic < text_window_count)
        frame = rect_of_window(windows[static_cast<std::size_t>(slot.graphic)]);
    return {{"values", std::move(values)},
            {"shown", std::move(shown)},
            {"rect", std::move(frame)},
            {"placed", slot.graphic != 0 || placed_in_pixels(slot) ? "pixels" : "cells"},
            {"cell", {cell_width(slot.font), cell_height(slot.font)}},
            {"kind", kind_of(slot)},
            {"boxed", boxed},
            {"text", utf8_from_latin1(text_of(slot.text))},
            {"hidden", is_hidden(slot)},
            {"selectable", is_selectable(slot)}};
}

/// A record in each language; null when the set does not have it.
json languages_json(const Reading& reading, std::vector<Slot> ScreenRecords::*set, std::size_t index,
                    const WindowSets& windows) {
    json by_language = json::object();
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const std::vector<Slot>& records = reading.screen.records[i].*set;
        if (index < records.size())
            by_language[std::string(languages[i].code)] =
                record_json(records[index], reading.description.names, windows[i]);
    }
    return by_language;
}

/// What is different from one language to the other, added to what the source says of a record.
json slot_json(const json& described, const Reading& reading, const WindowSets& windows) {
    json out = described;
    const auto index = described["index"].get<std::size_t>();
    const std::vector<Slot>& slots = reading.screen.records[0].slots;
    out["name"] = index < slots.size() ? utf8_from_latin1(text_of(slots[index].name)) : "";
    out["activated"] = index < slots.size() ? slots[index].activated : 0;
    out["languages"] = languages_json(reading, &ScreenRecords::slots, index, windows);
    return out;
}

/// Toggle records that nothing describes are looks of slots.
json toggles_json(const Reading& reading, const WindowSets& windows) {
    json toggles = json::array();
    const auto& records = reading.screen.records;
    for (std::size_t i = 0; i < std::max(records[0].toggles.size(), records[1].toggles.size()); ++i) {
        toggles.push_back({{"index", i}, {"line", 0}});
        for (const json& described : reading.description.toggles)
            if (described["index"] == i) {
                toggles.back() = described;
                break;
            }
        toggles.back()["languages"] = languages_json(reading, &ScreenRecords::toggles, i, windows);
    }
    return toggles;
}

json windows_json(json described, const std::array<TextWindow, text_window_count>& windows) {
    for (json& window : described)
        window["rect"] = rect_of_window(windows.at(window["number"]));
    return described;
}

/// Both texts with a line feed at their ends.
json lines_json(const std::string& before, const std::string& now) {
    const auto old = lines_of(before), lines = lines_of(now);
    const auto head = std::ranges::mismatch(old, lines).in1 - old.begin();
    const auto most = static_cast<std::ptrdiff_t>(std::min(old.size(), lines.size())) - head;
    const auto tail = std::mismatch(old.rbegin(), old.rbegin() + most, lines.rbegin()).first - old.rbegin();
    return {{"at", head},
            {"count", static_cast<std::ptrdiff_t>(old.size()) - head - tail},
            {"lines", std::vector(lines.begin() + head, lines.end() - tail)}};
}

} // namespace

std::string text_of_json(const json& object) {
    return object.dump(-1, ' ', false, json::error_handler_t::replace);
}

int slot_of_fault(const Fault& fault) {
    constexpr std::string_view slot = "slot ";
    int index = -1;
    if (std::string_view(fault.where).starts_with(slot))
        std::from_chars(fault.where.data() + slot.size(), fault.where.data() + fault.where.size(), index);
    return index;
}

json fault_json(const Fault& fault, const std::string& document, int slot) {
    const std::string code = code_text(fault.code);
    const FaultRow* const row = find_fault_row(code);
    json object{{"code", code},
                {"problem", as_utf8(fault.problem)},
                {"advice", as_utf8(fault.advice)},
                {"line", fault.line},
                {"column", fault.column},
                {"width", fault.width},
                {"slot", slot >= 0 ? json(slot) : json()},
                {"where", as_utf8(fault.where)},
                {"field", as_utf8(fault.field)},
                {"file", as_utf8(fault.file)},
                {"document", text_or_null(document)},
                {"fatal", fault.fatal},
                {"title", row ? std::string(row->title) : ""},
                {"explanation", row ? std::string(row->explanation) : ""}};
    if (!fault.nearest.empty())
        object["nearest"] = as_utf8(fault.nearest);
    return object;
}

json document_json(const Document& document, const Reading& reading, const WindowSets& windows) {
    json steps = json::array(), conflicts = steps, faults = steps, slots = steps, names = json::object();
    for (const History::Step& step : document.history.steps())
        steps.push_back(step.label);
    for (const MergeConflict& each : document.conflicts)
        conflicts.push_back({{"line", line_at(document.text, each.mine.begin)},
                             {"base", each.base},
                             {"mine", document.text.substr(each.mine.begin, each.mine.end - each.mine.begin)},
                             {"theirs", each.theirs},
                             {"removed", each.removed}});
    for (const Fault& fault : reading.faults)
        faults.push_back(fault_json(fault, document.name, slot_of_fault(fault)));
    for (const json& described : reading.description.slots)
        slots.push_back(slot_json(described, reading, windows));
    for (const auto& [name, number] : reading.description.names)
        names[std::string(meaning_word(name.first))][name.second] = number;
    const bool german = document.name.starts_with(languages[1].prefix);
    return {{"name", document.name},
            {"kind", row_of(document.kind).word},
            {"file", document.file},
            {"text", document.text},
            {"revision", document.revision},
            {"dirty", document.dirty()},
            {"made", document.made},
            {"steps", std::move(steps)},
            {"done", document.history.done()},
            {"conflicts", std::move(conflicts)},
            {"stale", reading.stale},
            {"names", std::move(names)},
            {"styles", reading.description.styles},
            {"windows", windows_json(reading.description.windows, windows[german ? 1 : 0])},
            {"buffers", reading.description.buffers},
            {"slots", std::move(slots)},
            {"toggles", toggles_json(reading, windows)},
            {"faults", std::move(faults)}};
}

json difference_json(const json& before, const json& now) {
    json out{{"name", now["name"]}, {"revision", now["revision"]}, {"since", before["revision"]}};
    for (const auto& [key, value] : now.items()) {
        const json& old = before[key];
        if (value == old)
            continue;
        if (key == "text") {
            out["lines"] = lines_json(old.get<std::string>() + "\n", value.get<std::string>() + "\n");
        } else if (value.is_array() && value.size() > 1) {
            json changed = json::object();
            for (std::size_t i = 0; i < value.size(); ++i)
                if (i >= old.size() || old[i] != value[i])
                    changed[std::to_string(i)] = value[i];
            out["lists"][key] = {{"size", value.size()}, {"changed", std::move(changed)}};
        } else {
            out[key] = value;
        }
    }
    return out;
}

} // namespace vcc::kit::edit
