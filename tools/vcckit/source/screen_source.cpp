#include "vcckit/source/screen_source.h"

#include "vcckit/record/fields.h"
#include "vcckit/source/source_values.h"
#include "vcckit/text/latin1.h"
#include "vcckit/text/nearest.h"

#include <algorithm>
#include <map>
#include <optional>
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
    Builder(const Node& source, std::string_view language, SourceNames names, const TextMeasure& measure,
            Faults& faults)
        : source_(source), measure_(measure), values_{language, std::move(names), faults} {}

    ScreenRecords build(ScreenPlaces& places) {
        for_each_record("slot", &Builder::add_slot);
        for_each_record("toggle", &Builder::add_toggle);
        place_pressed_looks();
        align_all(toggles_, "toggle");
        align_all(slots_, "slot");

        ScreenRecords out;
        out.slots = filled(slots_, count_of("slot_count"), places.slots);
        out.toggles = filled(toggles_, count_of("toggle_count"), places.toggles);
        out.has_toggle_file = !out.toggles.empty() || source_.find("toggle_count");
        return out;
    }

private:
    using Records = std::map<std::size_t, SourceRecord>;

    using Add = void (Builder::*)(const Node& table, const Layers& layers, std::size_t index);

    /// Adds every record of a kind.
    void for_each_record(const std::string& kind, Add add) {
        values_.where.clear();
        const Node* const list = source_.find(kind);
        if (!list)
            return;
        if (list->kind != Node::Kind::list || list->items.empty() ||
            !std::ranges::all_of(list->items, &Node::is_table)) {
            values_.fail(wrong_kind, *list, kind, "must be written as [[" + kind + "]]");
            return;
        }
        for (const Node& table : list->items)
            repeat(table, kind, add);
    }

    /// Adds every record that a table describes.
    void repeat(const Node& table, const std::string& kind, Add add) {
        const Node* const index_node = table.find("index");
        values_.where = index_node && index_node->is_number() ? kind + " " + std::to_string(index_node->number) : kind;
        const Layers layers = layers_of(source_, {&table, ""}, values_.teller());
        values_.where = kind;
        if (!index_node) {
            values_.fail(index_missing, table, "index", "is missing", "every record says where it stands: index = 3");
            return;
        }
        const auto index = values_.integer(*index_node, Meaning::number, "index");
        const Repetition repetition = values_.repetition(table);
        for (int i = 0; index && i < repetition.count; ++i) {
            const std::int64_t at = *index + std::int64_t{i} * repetition.step;
            values_.where = kind + " " + std::to_string(at);
            values_.repetition_index = i;
            values_.repetition_count = repetition.count;
            if (at < 0 || at >= slot_limit)
                values_.fail(out_of_range, *index_node, "index", "must be 0 to " + std::to_string(slot_limit - 1));
            else
                (this->*add)(table, layers, static_cast<std::size_t>(at));
        }
        values_.repetition_index = 0;
        values_.repetition_count = 1;
    }

    /// The minimum number of records, 0 without the key.
    std::size_t count_of(const char* key) {
        values_.where.clear();
        const Node* const node = source_.find(key);
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

    /// Its heading is the place of a record.
    SourceRecord begin_record(const Node& table) const {
        const Place heading{table.place.line, table.place.column, 0};
        return {empty_slot(), {values_.where, heading}, {}};
    }

    /// Applies the styles of a record and the record itself, which is the last layer.
    void apply_layers(SourceRecord& record, const Layers& layers, std::span<const std::string_view> others) {
        for (const Layer& layer : layers) {
            values_.where = layer.style.empty() ? record.places.where : "style " + layer.style;
            values_.apply(record, *layer.table, layer.style.empty() ? others : style_entries);
        }
        values_.where = record.places.where;
        values_.apply_steps(record, *layers.back().table);
    }

    void put(Records& records, std::size_t index, const SourceRecord& record, const char* what) {
        const auto [known, added] = records.emplace(index, record);
        if (!added)
            fail_record(described_twice, record.places, "",
                        std::string(what) + " " + std::to_string(index) + " is described twice",
                        "the first time in line " + std::to_string(known->second.places.whole.line));
    }

    void add_slot(const Node& table, const Layers& layers, std::size_t index) {
        SourceRecord record = begin_record(table);
        apply_layers(record, layers, slot_entries);
        Slot& slot = record.slot;

        const Layers highlight = looks_of(layers, "highlight", values_.teller());
        const bool states_focus =
            std::ranges::any_of(layers, [](const Layer& layer) { return layer.table->find("toggle"); });
        if (!highlight.empty() && !states_focus)
            slot.toggle = static_cast<std::int32_t>(index);

        const Layers pressed = looks_of(layers, "pressed", values_.teller());
        if (!pressed.empty()) {
            PressedLook look{index, pressed_index(pressed, slot, table), record};
            for (const Layer& layer : pressed)
                values_.apply(look.record, *layer.table, pressed_entries);
            if (slot.activated == 0)
                slot.activated = look.index;
            pressed_.push_back(look);
        }
        if (!highlight.empty()) {
            SourceRecord highlighted = record;
            for (const Layer& layer : highlight)
                values_.apply(highlighted, *layer.table, {});
            put(toggles_, index, highlighted, "toggle");
        }
        put(slots_, index, record, "slot");
    }

    /// The index of a pressed look: its own, else that of `activated`, else 0.
    std::int32_t pressed_index(const Layers& pressed, const Slot& slot, const Node& table) {
        const Node* node = nullptr;
        for (const Layer& look : pressed)
            if (const Node* const own = look.table->find("index"))
                node = own;
        if (!node)
            return slot.activated > 0 && slot.activated < slot_limit ? slot.activated : 0;
        const auto index = values_.integer(*node, Meaning::number, "pressed.index");
        const std::int64_t at =
            index.value_or(1) + std::int64_t{values_.repetition_index} * values_.repetition(table).step;
        if (at >= 1 && at < slot_limit)
            return static_cast<std::int32_t>(at);
        values_.fail(out_of_range, *node, "pressed.index", "must be 1 to " + std::to_string(slot_limit - 1));
        return 1;
    }

    void add_toggle(const Node& table, const Layers& layers, std::size_t index) {
        SourceRecord record = begin_record(table);
        if (const Node* const node = table.find("copy")) {
            const auto slot = values_.integer(*node, Meaning::number, "copy");
            const auto found = slots_.find(static_cast<std::size_t>(slot.value_or(-1)));
            if (found == slots_.end())
                values_.fail(copy_missing, *node, "copy", "there is no such slot");
            else
                record.slot = found->second.slot;
        }
        apply_layers(record, layers, toggle_entries);
        put(toggles_, index, record, "toggle");
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
        values_.fail(source_fault(code, places.whole, places.where, field, std::move(problem), std::move(advice)));
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
                values_.fail(source_fault(cannot_align, record.alignment.place, record.places.where, "align",
                                          aligned.fault, aligned.advice));
                continue;
            }
            record.slot = aligned.slot;
            if (!aligned.plate)
                continue;
            texts.push_back(record);
            record.slot = *aligned.plate;
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

    const Node& source_;
    const TextMeasure& measure_;
    SourceValues values_;
    Records slots_, toggles_;
    std::vector<PressedLook> pressed_;
};

void check_top_level(const Node& source, Faults& faults) {
    static const std::vector<std::string> known{"name", "language", "names",      "style",
                                                "slot", "toggle",   "slot_count", "toggle_count"};
    for (const Member& member : source.members)
        if (std::ranges::find(known, member.key) == known.end())
            faults.push_back(
                source_fault(unknown_entry, member.place, "", "", "unknown entry \"" + member.key + "\"",
                             "a source has name, language, names, style, slot, toggle, slot_count and toggle_count",
                             nearest_word(member.key, known)));
}

std::optional<std::size_t> read_language(const Node& node, Faults& faults) {
    for (std::size_t i = 0; i < languages.size(); ++i)
        if (node.is_text() && node.text == languages[i].code)
            return i;
    faults.push_back(source_fault(node.is_text() ? unknown_name : wrong_kind, node.place, "", "language",
                                  node.is_text() ? "unknown language \"" + node.text + "\"" : "must be a text",
                                  "en or de"));
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
    const SourceTree tree = read_source_tree(text);
    if (!tree) {
        out.faults.push_back(*tree.fault);
        return out;
    }
    const Node& source = *tree.root;
    check_top_level(source, out.faults);
    if (const Node* const name = source.find("name")) {
        out.screen.name = name->text;
        out.name_place = name->place;
        if (!is_screen_name(out.screen.name))
            out.faults.push_back(source_fault(bad_screen_name, out.name_place, "", "name",
                                              "must be a file name without folder and extension"));
    }
    if (const Node* const language = source.find("language"))
        out.screen.language = read_language(*language, out.faults);
    const SourceNames names = read_names(source, [&](Fault mistake) { out.faults.push_back(std::move(mistake)); });
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const LanguageRow& language = languages[out.screen.language.value_or(i)];
        out.screen.records[i] = Builder(source, language.code, names, measure, out.faults).build(out.places[i]);
    }
    out.faults = each_once(out.faults);
    return out;
}

} // namespace vcc::kit
