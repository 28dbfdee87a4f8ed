#include "vcckit/source/screen_source.h"

#include "vcckit/record/fields.h"
#include "vcckit/source/source_text.h"
#include "vcckit/source/source_values.h"
#include "vcckit/text/latin1.h"
#include "vcckit/text/nearest.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <span>

namespace vcc::kit {

namespace {

using enum FaultCode;

// What a table may contain besides fields. Styles apply to slots and toggle records.
constexpr std::array<std::string_view, 5> slot_entries{"index", "style", "repeat", "highlight", "pressed"};
constexpr std::array<std::string_view, 4> toggle_entries{"index", "style", "repeat", "copy"};
constexpr std::array<std::string_view, 3> style_entries{"style", "highlight", "pressed"};
constexpr std::array<std::string_view, 1> pressed_entries{"index"};

/// The pressed look of a slot; its place in the toggle set may still be open.
struct PressedLook {
    std::size_t slot = 0;
    std::int32_t index = 0; ///< 0: the first free one
    SourceRecord record;
};

/// Builds the records of one language.
class Builder {
public:
    Builder(const toml::table& source, std::string_view language, SourceNames names, const TextMeasure& measure,
            Faults& faults)
        : source_(source), measure_(measure), values_{language, std::move(names), faults} {}

    ScreenRecords build(ScreenPlaces& places) {
        for_each_record("slot", [this](const toml::table& table) { add_slots(table); });
        for_each_record("toggle", [this](const toml::table& table) { add_toggles(table); });
        place_pressed_looks();
        align_all(toggles_, "toggle");
        align_all(slots_, "slot");

        ScreenRecords out;
        out.slots = filled(slots_, count_of("slot_count"), places.slots);
        out.toggles = filled(toggles_, count_of("toggle_count"), places.toggles);
        out.has_toggle_file = !out.toggles.empty() || source_.contains("toggle_count");
        return out;
    }

private:
    using Records = std::map<std::size_t, SourceRecord>;
    using Tables = std::vector<const toml::table*>;

    template <class Each>
    void for_each_record(const char* key, Each each) {
        const toml::node* const node = source_.get(key);
        if (!node)
            return;
        const toml::array* const tables = node->as_array();
        if (!tables || !tables->is_homogeneous(toml::node_type::table)) {
            values_.fail(wrong_kind, *node, key, "must be written as [[" + std::string(key) + "]]");
            return;
        }
        for (const toml::node& table : *tables)
            each(*table.as_table());
    }

    /// The minimum number of records, 0 without the key.
    std::size_t count_of(const char* key) {
        const toml::node* const node = source_.get(key);
        if (!node)
            return 0;
        const auto count = values_.integer(*node, Meaning::number, key);
        if (count && *count >= 0 && *count <= slot_limit)
            return static_cast<std::size_t>(*count);
        if (count)
            values_.fail(out_of_range, *node, key, "must be 0 to " + std::to_string(slot_limit));
        return 0;
    }

    static std::vector<Slot> filled(const Records& records, std::size_t at_least, std::vector<RecordPlaces>& places) {
        const std::size_t count = records.empty() ? at_least : std::max(at_least, records.rbegin()->first + 1);
        std::vector<Slot> out(count, gap_slot());
        places.assign(count, {});
        for (const auto& [index, record] : records) {
            out[index] = record.slot;
            places[index] = record.places;
        }
        return out;
    }

    /// The styles of a table, each after those that it builds on, then the table itself.
    void collect(const toml::table& table, Tables& out, std::set<const toml::table*>& open) {
        values_.where = name_of(table);
        if (!open.insert(&table).second) {
            values_.fail(style_circle, *table.get("style"), "style", "it builds on itself");
            return;
        }
        if (const toml::node* const node = table.get("style")) {
            const toml::array* const list = node->as_array();
            for (std::size_t i = 0; list && i < list->size(); ++i)
                collect_style(table, *list->get(i), out, open);
            if (!list)
                collect_style(table, *node, out, open);
        }
        out.push_back(&table);
        open.erase(&table);
    }

    void collect_style(const toml::table& user, const toml::node& name, Tables& out,
                       std::set<const toml::table*>& open) {
        values_.where = name_of(user);
        const auto text = name.value<std::string>();
        const toml::table* const style = text ? source_["style"][*text].as_table() : nullptr;
        if (!style)
            values_.fail(text ? unknown_style : wrong_kind, name, "style",
                         text ? "there is no [style." + *text + "]" : "must be the name of a style", "",
                         nearest_word(text.value_or(""), style_names()));
        else
            collect(*style, out, open);
    }

    std::vector<std::string> style_names() const {
        std::vector<std::string> names;
        if (const toml::table* const styles = source_["style"].as_table())
            for (const auto& [name, style] : *styles)
                names.emplace_back(name.str());
        return names;
    }

    /// The name of a table in messages: a style's name, a record's number.
    std::string name_of(const toml::table& table) const {
        if (const toml::table* const styles = source_["style"].as_table())
            for (const auto& [name, style] : *styles)
                if (style.as_table() == &table)
                    return "style " + std::string(name.str());
        return record_;
    }

    Tables layers_of(const toml::table& table, const std::string& kind) {
        const auto index = table["index"].value_exact<std::int64_t>();
        record_ = index ? kind + " " + std::to_string(*index) : kind;
        Tables layers;
        std::set<const toml::table*> open;
        collect(table, layers, open);
        return layers;
    }

    /// The tables under a key in all layers; `key = false` drops those of earlier layers.
    Tables looks_of(const Tables& layers, const char* key) {
        Tables looks;
        for (const toml::table* layer : layers) {
            const toml::node* const node = layer->get(key);
            if (!node)
                continue;
            if (node->value<bool>() == false)
                looks.clear();
            else if (const toml::table* look = node->as_table())
                looks.push_back(look);
            else
                values_.fail(wrong_kind, *node, key, "must be a table of changes, or false");
        }
        return looks;
    }

    void apply_looks(SourceRecord& record, const Tables& looks, std::span<const std::string_view> others) {
        for (const toml::table* look : looks)
            values_.apply(record, *look, others);
    }

    /// Applies the styles of a record and the record itself, which is the last layer.
    void apply_layers(SourceRecord& record, const Tables& layers, std::span<const std::string_view> others) {
        for (const toml::table* layer : layers) {
            values_.where = layer == layers.back() ? record_ : name_of(*layer);
            values_.apply(record, *layer, layer == layers.back() ? others : style_entries);
        }
        values_.where = record_;
    }

    /// Calls a function with the index of every record that a table describes.
    template <class Each>
    void repeat(const toml::table& table, const char* kind, Each each) {
        values_.where = record_ = kind;
        const toml::node* const index_node = table.get("index");
        if (!index_node) {
            values_.fail(index_missing, table, "index", "is missing", "every record says where it stands: index = 3");
            return;
        }
        const auto index = values_.integer(*index_node, Meaning::number, "index");
        const Repetition repetition = values_.repetition(table);
        if (!index)
            return;
        for (int i = 0; i < repetition.count; ++i) {
            const std::int64_t at = *index + std::int64_t{i} * repetition.step;
            values_.where = record_ = std::string(kind) + " " + std::to_string(at);
            values_.repetition_index = i;
            values_.repetition_count = repetition.count;
            if (at < 0 || at >= slot_limit)
                values_.fail(out_of_range, *index_node, "index", "must be 0 to " + std::to_string(slot_limit - 1));
            else
                each(static_cast<std::size_t>(at));
        }
        values_.repetition_index = 0;
        values_.repetition_count = 1;
    }

    SourceRecord begin_record(const toml::table& table) const {
        SourceRecord record;
        record.slot = empty_slot();
        record.places.where = record_;
        record.places.whole = place_of(table.source());
        record.places.whole.width = 0;
        return record;
    }

    void put(Records& records, std::size_t index, const SourceRecord& record, const char* what) {
        const auto [known, added] = records.emplace(index, record);
        if (!added)
            values_.fail_at(described_twice, record.places.whole, "",
                            std::string(what) + " " + std::to_string(index) + " is described twice",
                            "the first time in line " + std::to_string(known->second.places.whole.line));
    }

    void add_slots(const toml::table& table) {
        const Tables layers = layers_of(table, "slot");
        repeat(table, "slot", [&](std::size_t index) {
            SourceRecord record = begin_record(table);
            apply_layers(record, layers, slot_entries);
            values_.apply_steps(record, table);
            Slot& slot = record.slot;

            const Tables highlight = looks_of(layers, "highlight");
            const bool states_focus = std::any_of(layers.begin(), layers.end(),
                                                  [](const toml::table* layer) { return layer->contains("toggle"); });
            if (!highlight.empty() && !states_focus)
                slot.toggle = static_cast<std::int32_t>(index);

            const Tables pressed = looks_of(layers, "pressed");
            PressedLook look{index, 0, record};
            if (!pressed.empty()) {
                look.index = pressed_index(pressed, slot, table);
                apply_looks(look.record, pressed, pressed_entries);
                if (slot.activated == 0)
                    slot.activated = look.index;
            }
            if (!highlight.empty()) {
                SourceRecord highlighted = record;
                apply_looks(highlighted, highlight, {});
                put(toggles_, index, highlighted, "toggle");
            }
            put(slots_, index, record, "slot");
            if (!pressed.empty())
                pressed_.push_back(look);
        });
    }

    /// The index of a pressed look: its own, else that of `activated`, else 0.
    std::int32_t pressed_index(const Tables& pressed, const Slot& slot, const toml::table& table) {
        for (auto look = pressed.rbegin(); look != pressed.rend(); ++look) {
            const toml::node* const node = (*look)->get("index");
            if (!node)
                continue;
            const auto index = values_.integer(*node, Meaning::number, "pressed.index");
            const std::int64_t at =
                index.value_or(1) + std::int64_t{values_.repetition_index} * values_.repetition(table).step;
            if (at >= 1 && at < slot_limit)
                return static_cast<std::int32_t>(at);
            values_.fail(out_of_range, *node, "pressed.index", "must be 1 to " + std::to_string(slot_limit - 1));
            return 1;
        }
        return slot.activated > 0 && slot.activated < slot_limit ? slot.activated : 0;
    }

    void add_toggles(const toml::table& table) {
        const Tables layers = layers_of(table, "toggle");
        repeat(table, "toggle", [&](std::size_t index) {
            SourceRecord record = begin_record(table);
            if (const toml::node* const node = table.get("copy")) {
                const auto slot = values_.integer(*node, Meaning::number, "copy");
                const auto found = slots_.find(static_cast<std::size_t>(slot.value_or(-1)));
                if (found == slots_.end())
                    values_.fail(copy_missing, *node, "copy", "there is no such slot");
                else
                    record.slot = found->second.slot;
            }
            apply_layers(record, layers, toggle_entries);
            values_.apply_steps(record, table);
            put(toggles_, index, record, "toggle");
        });
    }

    /// Looks with an index first; the others follow behind all slots, so that they are nobody's highlight.
    void place_pressed_looks() {
        const auto place = [this](const PressedLook& look, std::size_t index) {
            if (!toggles_.emplace(index, look.record).second)
                fail_record(described_twice, look.record.places, "pressed",
                            "toggle " + std::to_string(index) + " is described twice");
        };
        for (const PressedLook& look : pressed_)
            if (look.index != 0)
                place(look, static_cast<std::size_t>(look.index));
        std::size_t next = std::max<std::size_t>(1, slots_.empty() ? 0 : slots_.rbegin()->first + 1);
        for (const PressedLook& look : pressed_) {
            if (look.index != 0)
                continue;
            while (toggles_.contains(next))
                ++next;
            if (next >= slot_limit) {
                fail_record(no_room, look.record.places, "pressed", "there is no room for it among the toggle records");
                return;
            }
            place(look, next);
            // The looks were copied from the slot before its `activated` was known; a toggle record's own has no use.
            slots_[look.slot].slot.activated = static_cast<std::int32_t>(next);
        }
    }

    void fail_record(FaultCode code, const RecordPlaces& places, std::string_view field, std::string problem,
                     std::string advice = {}) {
        values_.where = places.where;
        values_.fail_at(code, places.whole, field, std::move(problem), std::move(advice));
    }

    /// Moves the texts that are to be aligned. A label on a box becomes two records: the second is drawn later, so it
    /// takes a number behind all others.
    void align_all(Records& records, const char* kind) {
        std::vector<SourceRecord> texts;
        for (auto& [index, record] : records) {
            if (!record.alignment.wanted())
                continue;
            const bool alone = record.slot.toggle == -1 && record.slot.activated == 0 && !toggles_.contains(index);
            const Aligned aligned = align(record.slot, record.alignment, measure_, !alone);
            if (!aligned.fault.empty()) {
                values_.where = record.places.where;
                values_.fail_at(cannot_align, record.alignment.place, "align", aligned.fault, aligned.advice);
                continue;
            }
            record.slot = aligned.slot;
            if (!aligned.has_plate)
                continue;
            texts.push_back(record);
            record.slot = aligned.plate;
        }
        for (const SourceRecord& text : texts) {
            const std::size_t next = records.rbegin()->first + 1;
            if (next >= slot_limit)
                fail_record(no_room, text.places, "align",
                            std::string("there is no ") + kind + " left for the text of the label");
            else
                records.emplace(next, text);
        }
    }

    const toml::table& source_;
    const TextMeasure& measure_;
    SourceValues values_;
    std::string record_; ///< the record being built: "slot 3"
    Records slots_, toggles_;
    std::vector<PressedLook> pressed_;
};

/// The names that a source adds to the built-in ones: [names.colour] gold = 164
SourceNames read_names(const toml::table& source, Faults& faults) {
    SourceNames names;
    const toml::node* const node = source.get("names");
    if (!node)
        return names;
    const auto fail = [&faults](FaultCode code, const toml::source_region& at, std::string problem,
                                std::string nearest = "") {
        faults.push_back(source_fault(code, place_of(at), "", "names", std::move(problem), "", std::move(nearest)));
    };
    const toml::table* const kinds = node->as_table();
    if (!kinds) {
        fail(wrong_kind, node->source(), "must be written as [names.colour], [names.sound] ...");
        return names;
    }
    for (const auto& [word, entries] : *kinds) {
        const auto meaning = meaning_of_word(word.str());
        const toml::table* const table = entries.as_table();
        if (!meaning || !table) {
            static const std::vector<std::string> words{"number", "colour", "font",  "action",
                                                        "sound",  "buffer", "input", "focus"};
            fail(unknown_entry, word.source(),
                 "\"" + std::string(word.str()) +
                     "\" is none of number, colour, font, action, sound, buffer, input, focus",
                 nearest_word(word.str(), words));
            continue;
        }
        for (const auto& [name, value] : *table) {
            const auto number = value.value_exact<std::int64_t>();
            if (number && *number >= INT32_MIN && *number <= INT32_MAX)
                names[{*meaning, std::string(name.str())}] = static_cast<std::int32_t>(*number);
            else
                fail(wrong_kind, value.source(), std::string(name.str()) + ": must be a number of 32 bits");
        }
    }
    return names;
}

void check_top_level(const toml::table& source, Faults& faults) {
    static const std::vector<std::string> known{"name", "language", "names",      "style",
                                                "slot", "toggle",   "slot_count", "toggle_count"};
    for (const auto& [key, node] : source)
        if (std::ranges::find(known, key.str()) == known.end())
            faults.push_back(source_fault(
                unknown_entry, place_of(key.source()), "", "", "unknown entry \"" + std::string(key.str()) + "\"",
                "a source has name, language, names, style, slot, toggle, slot_count and toggle_count",
                nearest_word(key.str(), known)));
}

std::optional<std::size_t> read_language(const toml::node& node, Faults& faults) {
    const auto code = node.value_exact<std::string>();
    for (std::size_t i = 0; i < languages.size(); ++i)
        if (code == languages[i].code)
            return i;
    faults.push_back(source_fault(code ? unknown_name : wrong_kind, place_of(node.source()), "", "language",
                                  code ? "unknown language \"" + *code + "\"" : "must be a text", "en or de"));
    return std::nullopt;
}

} // namespace

bool is_screen_name(std::string_view name) {
    const auto unfit = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F || c == '/' || c == '\\' || c == ':';
    };
    const bool extended = name.ends_with(".slt") || name.ends_with(".tgl") || name.ends_with(".toml");
    return !name.empty() && is_utf8(name) && std::ranges::none_of(name, unfit) && !extended;
}

ScreenSource read_screen_source(std::string_view text, const TextMeasure& measure) {
    ScreenSource out;
    if (const auto fault = fault_of_source_text(text)) {
        out.faults.push_back(*fault);
        return out;
    }
    const toml::parse_result parsed = toml::parse(text);
    if (!parsed) {
        Place place = place_of(parsed.error().source());
        place.width = 1;
        out.faults.push_back(source_fault(not_toml, place, "", "", std::string(parsed.error().description())));
        return out;
    }
    const toml::table& source = parsed.table();
    check_top_level(source, out.faults);
    if (const toml::node* const name = source.get("name")) {
        out.screen.name = name->value_exact<std::string>().value_or("");
        out.name_place = place_of(name->source());
        if (!is_screen_name(out.screen.name))
            out.faults.push_back(source_fault(bad_screen_name, out.name_place, "", "name",
                                              "must be a file name without folder and extension"));
    }
    if (const toml::node* const language = source.get("language"))
        out.screen.language = read_language(*language, out.faults);
    const SourceNames names = read_names(source, out.faults);
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const LanguageRow& language = languages[out.screen.language.value_or(i)];
        out.screen.records[i] = Builder(source, language.code, names, measure, out.faults).build(out.places[i]);
    }
    out.faults = each_once(out.faults);
    return out;
}

} // namespace vcc::kit
