#include "vcckit/edit/source_model.h"

#include "vcckit/source/record_lines.h"
#include "vcckit/text/latin1.h"

#include "platform/latin1.h"
#include "screen/slot.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

bool is_language(std::string_view key) {
    return std::ranges::any_of(languages, [key](const LanguageRow& row) { return row.code == key; });
}

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

Result<bool> collect_leaves(const Node& value, int count, Leaf at, std::vector<Leaf>& out) {
    if (value.kind == Node::Kind::list) {
        if (static_cast<int>(value.items.size()) != count)
            return Failure{"a list has " + std::to_string(value.items.size()) + " values for " + std::to_string(count) +
                           " records"};
        for (int i = 0; i < count; ++i) {
            if (at.position != every_position && at.position != i)
                continue; // a list within a list
            Leaf next = at;
            next.position = i;
            if (auto done = collect_leaves(value.items[static_cast<std::size_t>(i)], count, next, out); !done)
                return done;
        }
        return true;
    }
    const bool by_language =
        value.is_table() && std::ranges::any_of(value.members, [](const Member& m) { return is_language(m.key); });
    if (!by_language) {
        at.node = &value;
        out.push_back(at);
        return true;
    }
    for (const Member& member : value.members)
        for (std::size_t i = 0; i < languages.size(); ++i) {
            if (member.key != languages[i].code || !at.in[i])
                continue;
            Leaf next = at;
            next.in = {};
            next.in[i] = true;
            if (auto done = collect_leaves(member.value, count, next, out); !done)
                return done;
        }
    return true;
}

} // namespace

std::string name_of(const Address& address) {
    if (address.of == Address::Of::style)
        return "style " + address.style;
    const char* const kind = address.of == Address::Of::window ? "window" : key_of(address.of);
    return kind + std::string(address.of == Address::Of::toggle ? " record " : " ") + std::to_string(address.index);
}

const char* key_of(Address::Of kind) {
    return kind == Address::Of::toggle ? "toggle" : "slot";
}

Result<SourceModel> SourceModel::read(const std::string& source) {
    const SourceTree tree = read_source_tree(source);
    if (!tree)
        return Failure{tree.reason()};
    SourceModel model(source);
    model.root_ = tree.root;
    model.names_ = read_names(*tree.root, tell_nobody);
    return model;
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

std::string SourceModel::screen(const std::string& otherwise) const {
    const Node* const name = root_->find("name");
    return name && name->kind == Node::Kind::text ? name->text : otherwise;
}

Layers SourceModel::layers_of(const Node& table, const std::string& style) const {
    return kit::layers_of(*root_, {&table, style}, tell_nobody);
}

Subject SourceModel::record_subject(const RecordTable& record, const std::string& look) const {
    Subject subject;
    subject.record = record;
    subject.home = record.table;
    subject.look = look;
    subject.layers = layers_of(*record.table);
    if (!look.empty()) {
        subject.base.push_back(record_subject(record, ""));
        subject.layers = looks_of(subject.layers, look, tell_nobody);
    } else if (record.kind == Address::Of::toggle) {
        if (const auto slot = find(Address::Of::slot, small_number(*this, record.table->find("copy"), -1)))
            subject.base.push_back(record_subject(*slot, ""));
    }
    subject.own = look.empty() ? record.table : record.table->table(look);
    return subject;
}

Result<Subject> SourceModel::subject(const Address& address) const {
    if (!address.look.empty() && address.look != "highlight" && address.look != "pressed")
        return Failure{"there is no look \"" + address.look + "\": it is highlight or pressed"};
    if (address.of == Address::Of::style) {
        const Node* const table = style_of(*root_, address.style);
        if (!table)
            return Failure{"there is no [style." + address.style + "]"};
        Subject subject;
        subject.home = table;
        subject.look = address.look;
        subject.layers = layers_of(*table, address.style);
        if (!address.look.empty())
            subject.layers = looks_of(subject.layers, address.look, tell_nobody);
        subject.own = address.look.empty() ? table : table->table(address.look);
        return subject;
    }
    if (address.of == Address::Of::window)
        return Failure{"a screen has no windows of its own: they are in the file of text windows"};
    const bool toggle = address.of == Address::Of::toggle;
    const auto record = find(address.of, address.index);
    if (!record && toggle && find(Address::Of::slot, address.index))
        return Failure{name_of(address) + " is a look of slot " + std::to_string(address.index) + ": change it there"};
    if (!record)
        return Failure{"no [[" + std::string(key_of(address.of)) + "]] describes number " +
                       std::to_string(address.index)};
    if (toggle && !address.look.empty())
        return Failure{"a toggle record has no looks"};
    return record_subject(*record, address.look);
}

std::optional<std::int64_t> SourceModel::number_of(Meaning meaning, const std::string& name) const {
    if (const auto own = names_.find({meaning, name}); own != names_.end())
        return own->second;
    if (const auto known = number_of_name(meaning, name))
        return *known;
    return std::nullopt;
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

Result<Opened> open(const std::string& source, const Address& address) {
    auto model = SourceModel::read(source);
    if (!model)
        return Failure{model.reason()};
    auto subject = model->subject(address);
    if (!subject)
        return Failure{subject.reason()};
    return Opened{std::move(*model), std::move(*subject), TextEdits(source)};
}

Result<std::vector<Leaf>> leaves_of(const Node& value, int count) {
    std::vector<Leaf> out;
    Leaf whole;
    whole.in.fill(true);
    if (auto done = collect_leaves(value, count, whole, out); !done)
        return Failure{done.reason()};
    return out;
}

std::optional<std::int64_t> step_of(const RecordTable& record, std::string_view field) {
    const Node* const repeat = record.table->table("repeat");
    const Node* const step = repeat ? repeat->find(field) : nullptr;
    return step ? plain_number(step) : 0;
}

} // namespace vcc::kit::edit
