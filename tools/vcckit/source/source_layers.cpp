#include "vcckit/source/source_layers.h"

#include "vcckit/text/nearest.h"

#include "core/installation.h"

#include <algorithm>
#include <set>

namespace vcc::kit {

namespace {

using enum FaultCode;

/// Collects from the last layer to the first: of a style that is met several times only the last one counts, and styles
/// that build on one another crosswise have very many paths.
class LayerCollector {
public:
    LayerCollector(const Node& source, const TellMistake& tell) : source_(source), tell_(tell) {}

    void collect(const Layer& layer) {
        if (open_.contains(layer.table)) {
            tell_(source_fault(style_circle, layer.table->find("style")->place, where_of(layer), "style",
                               "it builds on itself"));
            return;
        }
        if (!met_.insert(layer.table).second)
            return;
        layers.push_back(layer);
        open_.insert(layer.table);
        const std::span<const Node> names = styles_of(*layer.table);
        for (auto name = names.rbegin(); name != names.rend(); ++name)
            collect_style(*name, layer);
        open_.erase(layer.table);
    }

    Layers layers;

private:
    static std::string where_of(const Layer& layer) { return layer.style.empty() ? "" : "style " + layer.style; }

    void collect_style(const Node& name, const Layer& user) {
        if (const Node* const style = style_of(source_, name.text); style && name.is_text()) {
            collect({style, name.text});
            return;
        }
        const Node* const styles = source_.table("style");
        tell_(source_fault(name.is_text() ? unknown_style : wrong_kind, name.place, where_of(user), "style",
                           name.is_text() ? "there is no [style." + name.text + "]" : "must be the name of a style", "",
                           styles ? nearest_word(name.text, styles->members, &Member::key) : ""));
    }

    const Node& source_;
    const TellMistake& tell_;
    std::set<const Node*> open_, met_;
};

} // namespace

const Node* style_of(const Node& source, std::string_view name) {
    const Node* const styles = source.table("style");
    return styles ? styles->table(name) : nullptr;
}

std::span<const Node> styles_of(const Node& table) {
    const Node* const style = table.find("style");
    if (!style)
        return {};
    return style->kind == Node::Kind::list ? std::span(style->items) : std::span(style, 1);
}

Layers layers_of(const Node& source, const Layer& table, const TellMistake& tell) {
    LayerCollector collector(source, tell);
    collector.collect(table);
    std::ranges::reverse(collector.layers);
    return std::move(collector.layers);
}

Layers looks_of(const Layers& layers, std::string_view key, const TellMistake& tell) {
    Layers looks;
    for (const Layer& layer : layers) {
        const Node* const node = layer.table->find(key);
        if (!node)
            continue;
        if ((node->kind == Node::Kind::flag && !node->flag) || (node->is_number() && node->number == 0))
            looks.clear();
        else if (node->is_table())
            looks.push_back({node, layer.style});
        else
            tell(source_fault(wrong_kind, node->place, "", key, "must be a table of changes, or false"));
    }
    return looks;
}

const Node* part_of(const Node& value, std::string_view language, int repetition, int count, std::string_view field,
                    const TellMistake& tell) {
    const auto fail = [&](FaultCode code, const Place& place, std::string problem, std::string advice) {
        tell(source_fault(code, place, "", field, std::move(problem), std::move(advice)));
        return nullptr;
    };
    if (value.kind == Node::Kind::list) {
        if (static_cast<int>(value.items.size()) != count)
            return fail(list_length, value.place,
                        "has " + std::to_string(value.items.size()) + " values for " + std::to_string(count) +
                            " records",
                        "a list has one value for each repetition");
        return part_of(value.items[static_cast<std::size_t>(repetition)], language, repetition, count, field, tell);
    }
    if (!value.is_table() || value.find("raw"))
        return &value;
    for (const Member& member : value.members)
        if (std::ranges::find(languages, member.key, &LanguageRow::code) == languages.end())
            return fail(language_missing, member.place, "\"" + member.key + "\" is no language",
                        "languages are en and de");
    if (const Node* const chosen = value.find(language))
        return part_of(*chosen, language, repetition, count, field, tell);
    return fail(language_missing, value.place, "has no value for the language \"" + std::string(language) + "\"",
                "write one for en and one for de");
}

SourceNames read_names(const Node& source, const TellMistake& tell) {
    SourceNames names;
    const Node* const kinds = source.find("names");
    if (!kinds)
        return names;
    if (!kinds->is_table())
        tell(source_fault(wrong_kind, kinds->place, "", "names",
                          "must be written as [names.colour], [names.sound] ..."));
    for (const Member& kind : kinds->members) {
        const auto meaning = meaning_of_word(kind.key);
        if (!meaning || !kind.value.is_table()) {
            std::string list;
            for (const Meaning each : all_meanings)
                list += (list.empty() ? "" : ", ") + std::string(meaning_word(each));
            tell(source_fault(unknown_entry, kind.place, "", "names", "\"" + kind.key + "\" is none of " + list, "",
                              nearest_word(kind.key, all_meanings, meaning_word)));
            continue;
        }
        for (const Member& name : kind.value.members)
            if (const Node& value = name.value;
                value.is_number() && value.number >= INT32_MIN && value.number <= INT32_MAX)
                names[{*meaning, name.key}] = static_cast<std::int32_t>(value.number);
            else
                tell(source_fault(wrong_kind, value.place, "", "names", name.key + ": must be a number of 32 bits"));
    }
    return names;
}

} // namespace vcc::kit
