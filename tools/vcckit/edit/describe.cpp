// What is written where in a source: the parts of the text that an editor shows beside the records.
#include "vcckit/check/fixed_slots.h"
#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/source_model.h"

#include "screen/slot.h"

namespace vcc::kit::edit {

using nlohmann::json;

namespace {

/// Keys of a record that are no fields; what they say is told in other ways.
bool is_structure(std::string_view key) {
    return key == "index" || key == "repeat" || key == "style" || key == "highlight" || key == "pressed";
}

json written_in(const Layers& layers, const char* own) {
    json written = json::object();
    for (const Layer& layer : layers)
        for (const Member& member : layer.table->members)
            if (!is_structure(member.key))
                written[member.key] = layer.style.empty() ? own : "style " + layer.style;
    return written;
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

/// What records and styles have in common.
json describe_table(const SourceModel& model, const Node& table) {
    json styles = json::array();
    for (const Node& style : styles_of(table))
        styles.push_back(style.text);
    return {{"line", line_of(model, table)}, {"styles", std::move(styles)}};
}

void add_looks(json& out, const Layers& layers, bool with_fields) {
    out["looks"] = json::array();
    for (const char* const look : {"highlight", "pressed"})
        if (const Layers looks = looks_of(layers, look, tell_nobody); !looks.empty()) {
            out["looks"].push_back(look);
            if (with_fields)
                out["look_written"][look] = written_in(looks, "slot");
        }
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

json values_in(const SourceModel& model, const Node& table) {
    json values = json::object();
    for (const Member& field : table.members)
        if (!is_structure(field.key))
            values[field.key] = text_of_value(model, field.value);
    return values;
}

json describe_record(const SourceModel& model, const RecordTable& record, const std::string& screen) {
    const bool slot = record.kind == Address::Of::slot;
    const Layers layers = model.layers_of(*record.table);
    json out = describe_table(model, *record.table);
    out["index"] = record.index();
    out["written"] = written_in(layers, slot ? "slot" : "toggle");
    out["said"] = json::object();
    for (const Layer& layer : layers)
        for (const char* const field : {"align", "padding"})
            if (const Node* const value = layer.table->find(field))
                out["said"][field] = text_of_value(model, *value);
    out["repeat"] = nullptr;
    if (record.table->find("repeat"))
        out["repeat"] = {
            {"first", record.first}, {"count", record.count}, {"step", record.step}, {"position", record.position}};
    if (slot) {
        out["protected"] = text_or_null(role_of_fixed_slot(screen_name(model.root(), screen), record.index()));
        out["look_written"] = json::object();
        add_looks(out, layers, true);
    }
    return out;
}

json describe_records(const SourceModel& model, Address::Of kind, const std::string& screen) {
    json out = json::array();
    for (RecordTable record : model.tables(kind))
        for (record.position = 0; record.position < record.count; ++record.position)
            if (record.index() >= 0 && record.index() < slot_limit)
                out.push_back(describe_record(model, record, screen));
    return out;
}

json describe_style(const SourceModel& model, const std::string& name, const Node& table) {
    json out = describe_table(model, table);
    out["name"] = name;
    out["written"] = values_in(model, table);
    add_looks(out, model.layers_of(table, name), false);
    out["look_written"] = json::object();
    for (const std::string look : out["looks"])
        if (const Node* const own = table.table(look))
            out["look_written"][look] = values_in(model, *own);
    return out;
}

} // namespace

Description describe_screen(const std::string& source, const std::string& screen) {
    Description out;
    const SourceModel model(source);
    out.names = model.names();
    out.slots = describe_records(model, Address::Of::slot, screen);
    out.toggles = describe_records(model, Address::Of::toggle, screen);
    if (const Node* const styles = model.root().table("style"))
        for (const Member& style : styles->members)
            if (style.value.is_table())
                out.styles.push_back(describe_style(model, style.key, style.value));
    return out;
}

} // namespace vcc::kit::edit
