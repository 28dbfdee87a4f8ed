#include "vcckit/source/source_tree.h"

#include "vcckit/source/source_text.h"

#include <algorithm>
#include <deque>
#include <mutex>
#include <tuple>
#include <utility>

#include <toml++/toml.h>

namespace vcc::kit {

namespace {

using Kind = Node::Kind;
using Form = Node::Form;

Place place_of(const toml::source_region& region) {
    const auto &begin = region.begin, &end = region.end;
    return {std::max(1, static_cast<int>(begin.line)), std::max(1, static_cast<int>(begin.column)),
            end.line == begin.line && end.column > begin.column ? static_cast<int>(end.column - begin.column) : 0};
}

/// Takes over what TOML's reader has read, with the bytes that it is written with.
class TreeBuilder {
public:
    explicit TreeBuilder(std::string_view source) : source_(source) {
        const std::size_t first = source.starts_with(byte_order_mark) ? byte_order_mark.size() : 0;
        for (std::size_t at = first; at <= source.size(); ++at) {
            if (at < source.size() && (static_cast<unsigned char>(source[at]) & 0xC0U) == 0x80U)
                continue; // within a character
            if (at == first || source[at - 1] == '\n')
                lines_.push_back(characters_.size());
            characters_.push_back(at);
        }
    }

    Node root(const toml::table& table) const {
        Node node;
        node.kind = Kind::table;
        node.form = Form::section;
        node.on_lines = true;
        node.tail = characters_.front();
        add_members(node, table, 0);
        return node;
    }

private:
    std::size_t byte_at(const toml::source_position& position) const {
        const std::size_t line = std::min<std::size_t>(position.line, lines_.size());
        const std::size_t character = lines_[std::max<std::size_t>(line, 1) - 1] + position.column;
        return characters_[std::min(std::max<std::size_t>(character, 1) - 1, characters_.size() - 1)];
    }

    /// The whole lines that a stretch lies in, with the end of the last one.
    Span lines_of(const Span& span) const {
        const std::size_t end = source_.find('\n', span.end);
        return {std::max(source_.rfind('\n', span.begin) + 1, characters_.front()),
                end == std::string_view::npos ? source_.size() : end + 1};
    }

    /// Where a key begins of which only the last part is known, and how many stand before it.
    std::size_t begin_of_key(std::size_t last_part, int before) const {
        std::size_t at = last_part;
        for (; before > 0; --before) {
            at = source_.find_last_not_of(" \t.", at - 1);
            const char quote = source_[at];
            if (quote != '"' && quote != '\'') {
                at = source_.find_last_of(" \t\r\n.,{", at) + 1;
                continue;
            }
            const auto is_escaped = [&] {
                return at > 0 && (at - 1 - source_.find_last_not_of('\\', at - 1)) % 2 != 0;
            };
            do
                at = source_.rfind(quote, at - 1);
            while (quote == '"' && is_escaped());
        }
        return at;
    }

    static bool is_list_of_sections(const toml::node& node) {
        const toml::array* const list = node.as_array();
        const toml::table* const first = list && !list->empty() ? list->front().as_table() : nullptr;
        return first && !first->is_inline();
    }

    /// `parts`: of their keys that stand before those of the table's own members.
    void add_members(Node& node, const toml::table& table, int parts) const {
        using Entry = std::pair<const toml::key*, const toml::node*>;
        std::vector<Entry> entries;
        for (const auto& [key, value] : table)
            entries.emplace_back(&key, &value);
        std::ranges::sort(entries, {}, [](const Entry& entry) {
            const auto& begin = entry.first->source().begin;
            return std::tuple(begin.line, begin.column);
        });
        for (const auto& [key, value] : entries) {
            const std::size_t begin = byte_at(key->source().begin);
            if (node.form == Form::dotted && node.prefix.empty()) {
                const std::size_t first = begin_of_key(begin, parts);
                node.prefix = source_.substr(first, begin - first);
            }
            Member member;
            member.key = key->str();
            member.place = place_of(key->source());
            const toml::table* const inner = value->as_table();
            if (is_list_of_sections(*value)) {
                member.value.kind = Kind::list;
                member.value.form = Form::implied;
                member.value.place = place_of(value->source());
                for (const toml::node& item : *value->as_array())
                    member.value.items.push_back(section(*item.as_table()));
            } else if (inner && !inner->is_inline()) {
                const bool dotted = source_[byte_at(inner->source().begin)] != '[';
                member.value = dotted ? dotted_table(*inner, node.on_lines, parts + 1) : section(*inner);
                if (dotted)
                    node.tail = std::max(node.tail, member.value.tail);
            } else {
                member.value = value_of(*value);
                member.key_span = {begin_of_key(begin, parts), byte_at(key->source().end)};
                member.whole = {member.key_span.begin, member.value.span.end};
                if (node.on_lines)
                    member.line = lines_of(member.whole);
                node.tail = std::max(node.tail, node.on_lines ? member.line.end : member.whole.end);
            }
            node.members.push_back(std::move(member));
        }
    }

    /// [style.button], or an entry of [[slot]]; a table that has no heading of its own has that of its first member.
    Node section(const toml::table& table) const {
        const auto is_implied_by = [&](const toml::node& member) {
            return (member.is_table() || is_list_of_sections(member)) && member.source().begin == table.source().begin;
        };
        Node node;
        node.kind = Kind::table;
        node.place = place_of(table.source());
        node.form = Form::section;
        for (const auto& [key, value] : table)
            if (is_implied_by(value))
                node.form = Form::implied;
        if (node.form == Form::section) {
            const std::size_t begin = byte_at(table.source().begin);
            node.heading = lines_of({begin, begin});
            node.on_lines = true;
            node.tail = node.heading.end;
        }
        add_members(node, table, 0);
        return node;
    }

    Node dotted_table(const toml::table& table, bool on_lines, int parts) const {
        Node node;
        node.kind = Kind::table;
        node.place = place_of(table.source());
        node.form = Form::dotted;
        node.on_lines = on_lines;
        add_members(node, table, parts);
        return node;
    }

    Node value_of(const toml::node& value) const {
        Node node;
        node.place = place_of(value.source());
        node.span = {byte_at(value.source().begin), byte_at(value.source().end)};
        if (const auto number = value.value_exact<std::int64_t>()) {
            node.kind = Kind::number;
            node.number = *number;
        } else if (const auto flag = value.value_exact<bool>()) {
            node.kind = Kind::flag;
            node.flag = *flag;
        } else if (auto text = value.value_exact<std::string>()) {
            node.kind = Kind::text;
            node.text = std::move(*text);
        } else if (const toml::array* const list = value.as_array()) {
            node.kind = Kind::list;
            for (const toml::node& item : *list)
                node.items.push_back(value_of(item));
        } else if (const toml::table* const table = value.as_table()) {
            node.kind = Kind::table;
            node.tail = node.span.begin + 1;
            add_members(node, *table, 0);
        }
        return node;
    }

    std::string_view source_;
    std::vector<std::size_t> characters_, lines_; ///< first bytes of characters; first characters of lines
};

SourceTree read(std::string_view source) {
    if (auto fault = fault_of_source_text(source))
        return {nullptr, std::move(fault)};
    try {
        return {std::make_shared<const Node>(TreeBuilder(source).root(toml::parse(source))), std::nullopt};
    } catch (const toml::parse_error& error) {
        Place place = place_of(error.source());
        place.width = 1;
        return {nullptr, source_fault(FaultCode::not_toml, place, "", "", std::string(error.description()))};
    }
}

} // namespace

const Member* Node::member(std::string_view key) const {
    const auto found = std::ranges::find(members, key, &Member::key);
    return found == members.end() ? nullptr : &*found;
}

const Node* Node::find(std::string_view key) const {
    const Member* const found = member(key);
    return found ? &found->value : nullptr;
}

const Node* Node::table(std::string_view key) const {
    const Node* const found = find(key);
    return found && found->is_table() ? found : nullptr;
}

std::string SourceTree::reason() const {
    return fault ? "line " + std::to_string(fault->line) + ": " + fault->problem : "";
}

SourceTree read_source_tree(std::string_view source) {
    static std::mutex mutex;
    static std::deque<std::pair<std::string, SourceTree>> kept;
    constexpr std::size_t most_kept = 4;
    const std::lock_guard held(mutex);
    const auto text_of = [](const auto& each) -> std::string_view { return each.first; };
    if (const auto known = std::ranges::find(kept, source, text_of); known != kept.end())
        return known->second;
    kept.emplace_front(source, read(source));
    kept.resize(std::min(kept.size(), most_kept));
    return kept.front().second;
}

int line_at(std::string_view source, std::size_t byte) {
    return 1 + static_cast<int>(std::ranges::count(source.substr(0, byte), '\n'));
}

} // namespace vcc::kit
