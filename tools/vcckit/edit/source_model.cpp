#include "vcckit/edit/source_model.h"

#include "vcckit/source/record_lines.h"
#include "vcckit/text/latin1.h"

#include "screen/slot.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

std::optional<std::int64_t> plain_number(const Node* node) {
    return node && node->kind == Node::Kind::number ? std::optional(node->number) : std::nullopt;
}

/// A small number, by name, too; or what stands for it.
int small_number(const SourceModel& model, const Node* node, int otherwise) {
    const auto number = node ? model.number(*node, Meaning::number) : std::nullopt;
    return number && *number >= -slot_limit && *number <= slot_limit ? static_cast<int>(*number) : otherwise;
}

std::optional<RecordTable> record_of(const SourceModel& model, const Node& table, Address::Of kind) {
    const int index = small_number(model, table.find("index"), -1);
    if (index < 0 || index >= slot_limit)
        return std::nullopt;
    RecordTable record{&table, kind, index};
    if (const Node* const repeat = table.table("repeat")) {
        record.count = std::max(1, small_number(model, repeat->find("count"), 1));
        record.step = small_number(model, repeat->find("step"), 1);
    }
    return record;
}

} // namespace

std::string name_of(const Address& address) {
    if (address.of == Address::Of::style)
        return "style " + address.style;
    return key_of(address.of) + std::string(address.of == Address::Of::toggle ? " record " : " ") +
           std::to_string(address.index);
}

const char* key_of(Address::Of kind) {
    constexpr const char* keys[] = {"slot", "toggle", "style", "window", "buffer"};
    return keys[static_cast<std::size_t>(kind)];
}

void expect_in_screen(Address::Of kind) {
    if (kind == Address::Of::window || kind == Address::Of::buffer)
        throw Refused("a screen has no " + std::string(key_of(kind)) + "s of its own: they have a file to themselves");
}

SourceModel::SourceModel(const std::string& source) : source_(&source) {
    const SourceTree tree = read_source_tree(source);
    if (!tree)
        throw Refused(tree.reason());
    root_ = tree.root;
    names_ = read_names(*root_, tell_nobody);
}

std::vector<RecordTable> SourceModel::tables(Address::Of kind) const {
    std::vector<RecordTable> out;
    if (const Node* const list = root_->find(key_of(kind)))
        for (const Node& table : list->items)
            if (const auto record = record_of(*this, table, kind))
                out.push_back(*record);
    return out;
}

std::optional<RecordTable> SourceModel::find(Address::Of kind, int index) const {
    for (RecordTable record : tables(kind))
        for (record.position = 0; record.position < record.count; ++record.position)
            if (record.index() == index)
                return record;
    return std::nullopt;
}

Layers SourceModel::layers_of(const Node& table, const std::string& style) const {
    return kit::layers_of(*root_, {&table, style}, tell_nobody);
}

Subject SourceModel::subject_of(const Node& home, const std::string& style, const std::string& look) const {
    Subject subject;
    subject.home = &home;
    subject.look = look;
    subject.own = look.empty() ? &home : home.table(look);
    subject.layers = layers_of(home, style);
    if (!look.empty())
        subject.layers = looks_of(subject.layers, look, tell_nobody);
    return subject;
}

Subject SourceModel::record_subject(const RecordTable& record, const std::string& look) const {
    Subject subject = subject_of(*record.table, "", look);
    subject.record = record;
    if (!look.empty())
        subject.base.push_back(record_subject(record, ""));
    else if (record.kind == Address::Of::toggle)
        if (const auto slot = find(Address::Of::slot, small_number(*this, record.table->find("copy"), -1)))
            subject.base.push_back(record_subject(*slot, ""));
    return subject;
}

Subject SourceModel::subject(const Address& address) const {
    if (!address.look.empty() && address.look != "highlight" && address.look != "pressed")
        throw Refused("there is no look \"" + address.look + "\": it is highlight or pressed");
    if (address.of == Address::Of::style) {
        const Node* const home = style_of(*root_, address.style);
        return home ? subject_of(*home, address.style, address.look)
                    : throw Refused("there is no [style." + address.style + "]");
    }
    expect_in_screen(address.of);
    const bool toggle = address.of == Address::Of::toggle;
    const auto record = find(address.of, address.index);
    if (!record && toggle && find(Address::Of::slot, address.index))
        throw Refused(name_of(address) + " is a look of slot " + std::to_string(address.index) + ": change it there");
    if (!record)
        throw Refused("no [[" + std::string(key_of(address.of)) + "]] describes number " +
                      std::to_string(address.index));
    if (toggle && !address.look.empty())
        throw Refused("a toggle record has no looks");
    return record_subject(*record, address.look);
}

std::optional<std::int64_t> SourceModel::number_of(Meaning meaning, const std::string& name) const {
    const auto own = names_.find({meaning, name});
    return own != names_.end() ? own->second : number_of_name(meaning, name);
}

std::optional<std::int64_t> SourceModel::number(const Node& value, Meaning meaning) const {
    if (value.kind == Node::Kind::text)
        return number_of(meaning, value.text);
    return plain_number(&value);
}

std::string SourceModel::written(std::int64_t number, Meaning meaning) const {
    for (const auto& [key, value] : names_)
        if (key.first == meaning && value == number)
            return quoted_text(key.second).value_or(std::to_string(number));
    return number_text(static_cast<std::int32_t>(number), meaning);
}

std::string_view SourceModel::text_at(const Span& span) const {
    return std::string_view(*source_).substr(span.begin, span.end - span.begin);
}

std::string screen_name(const Node& root, const std::string& otherwise) {
    const Node* const name = root.find("name");
    return name && name->is_text() ? name->text : otherwise;
}

const Node* part_at(const Node& value, std::size_t language, int position, int count) {
    if (value.kind == Node::Kind::list) {
        if (static_cast<int>(value.items.size()) != count)
            throw Refused("a list has " + std::to_string(value.items.size()) + " values for " + std::to_string(count) +
                          " records");
        return part_at(value.items[static_cast<std::size_t>(position)], language, position, count);
    }
    if (!value.is_table() || std::ranges::none_of(languages, [&](const auto& row) { return value.find(row.code); }))
        return &value;
    const Node* const chosen = value.find(languages[language].code);
    return chosen ? part_at(*chosen, language, position, count) : nullptr;
}

std::optional<std::int64_t> step_of(const RecordTable& record, std::string_view field) {
    const Node* const repeat = record.table->table("repeat");
    const Node* const step = repeat ? repeat->find(field) : nullptr;
    return step ? plain_number(step) : 0;
}

} // namespace vcc::kit::edit
