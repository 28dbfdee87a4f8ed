#include "vcckit/edit/describe.h"

#include "vcckit/check/fixed_slots.h"
#include "vcckit/edit/field_edit.h"
#include "vcckit/edit/source_model.h"
#include "vcckit/edit/window_edit.h"

#include "screen/slot.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

/// Keys of a record that are no fields; what they say is told in other ways.
bool is_structure(std::string_view key) {
    return key == "index" || key == "repeat" || key == "style" || key == "highlight" || key == "pressed";
}

Written written_in(const std::vector<Layer>& layers, const char* own) {
    Written written;
    for (const Layer& layer : layers)
        for (const Member& member : layer.table->members)
            if (!is_structure(member.key))
                written[member.key] = layer.style.empty() ? own : "style " + layer.style;
    return written;
}

std::map<std::string, Written> looks_of_record(const SourceModel& model, const RecordTable& record) {
    std::map<std::string, Written> looks;
    for (const char* look : {"highlight", "pressed"})
        if (const Subject subject = model.record_subject(record, look); !subject.layers.empty())
            looks[look] = written_in(subject.layers, "slot");
    return looks;
}

std::map<std::string, Written> looks_of_style(const SourceModel& model, const std::string& style) {
    std::map<std::string, Written> looks;
    for (const char* look : {"highlight", "pressed"})
        if (const auto subject = model.subject({Address::Of::style, 0, style, look});
            subject && !subject->layers.empty())
            looks[look] = written_in(subject->layers, "style");
    return looks;
}

std::vector<std::string> names_of(const std::vector<const Node*>& styles) {
    std::vector<std::string> names;
    std::ranges::transform(styles, std::back_inserter(names), &Node::text);
    return names;
}

/// The first line that a table is written on.
int line_of(const SourceModel& model, const Node& table) {
    const bool headed = table.heading.end > table.heading.begin;
    const bool braced = table.span.end > table.span.begin;
    std::size_t at = headed ? table.heading.begin : table.span.begin;
    if (!headed && !braced && !table.members.empty()) {
        const Member& first = table.members.front();
        if (first.whole.end == first.whole.begin)
            return line_of(model, first.value);
        at = first.whole.begin;
    }
    return line_at(model.source(), at);
}

RecordDescription describe_record(const SourceModel& model, const RecordTable& record, const EditRules& rules) {
    const bool slot = record.kind == Address::Of::slot;
    RecordDescription out;
    out.index = record.index();
    out.line = line_of(model, *record.table);
    out.styles = names_of(styles_of(*record.table));
    if (record.table->find("repeat"))
        out.repeat = RepeatDescription{record.first, record.count, record.step, record.position};
    out.written = written_in(model.layers_of(*record.table), slot ? "slot" : "toggle");
    if (slot) {
        out.fixed = role_of_fixed_slot(model.screen(rules.screen), out.index);
        out.looks = looks_of_record(model, record);
    }
    return out;
}

std::vector<RecordDescription> describe_records(const SourceModel& model, Address::Of kind, const EditRules& rules) {
    std::vector<RecordDescription> out;
    for (RecordTable record : model.tables(kind))
        for (record.position = 0; record.position < record.count; ++record.position)
            if (record.index() >= 0 && record.index() < slot_limit)
                out.push_back(describe_record(model, record, rules));
    return out;
}

/// A value as the text has it; the parts of one that is written in several places as a table.
std::string text_of_value(const SourceModel& model, const Node& value) {
    if (value.span.end > value.span.begin)
        return std::string(model.text_at(value.span));
    std::string out = "{";
    for (const Member& member : value.members)
        out += (out.size() > 1 ? ", " : " ") + member.key + " = " + text_of_value(model, member.value);
    return out + " }";
}

} // namespace

Result<Description> describe(const std::string& source, DocumentKind kind, const EditRules& rules) {
    Description out;
    if (kind == DocumentKind::windows) {
        for (const WindowPart& window : windows_of(source))
            out.windows.push_back({window.number, window.line, role_of_fixed_window(window.number), window.values});
        return out;
    }
    const auto model = SourceModel::read(source);
    if (!model)
        return Failure{model.reason()};
    for (const auto& [key, number] : model->names())
        out.names[key.first][key.second] = number;
    out.slots = describe_records(*model, Address::Of::slot, rules);
    out.toggles = describe_records(*model, Address::Of::toggle, rules);
    if (const Node* const styles = model->root().find("style"))
        for (const Member& member : styles->members) {
            if (!member.value.is_table())
                continue;
            StyleDescription style;
            style.name = member.key;
            style.line = line_of(*model, member.value);
            style.styles = names_of(styles_of(member.value));
            for (const Member& field : member.value.members)
                if (!is_structure(field.key))
                    style.values[field.key] = text_of_value(*model, field.value);
            style.looks = looks_of_style(*model, member.key);
            out.styles.push_back(std::move(style));
        }
    return out;
}

} // namespace vcc::kit::edit
