#include "vcckit/edit/record_edit.h"

#include "vcckit/check/fixed_slots.h"
#include "vcckit/edit/field_edit.h"
#include "vcckit/edit/record_text.h"
#include "vcckit/edit/source_model.h"
#include "vcckit/edit/text_edits.h"
#include "vcckit/record/fields.h"
#include "vcckit/source/unpack.h"
#include "vcckit/text/latin1.h"
#include "vcckit/text/lines.h"

#include <algorithm>
#include <cctype>

namespace vcc::kit::edit {

namespace {

using Of = Address::Of;

/// Why a record cannot get this number; empty when it can.
std::string why_not_index(const SourceModel& model, Of kind, int index) {
    if (index < 0 || index >= slot_limit)
        return "numbers are 0 to " + std::to_string(slot_limit - 1);
    if (const auto there = model.find(kind, index))
        return name_of({kind, index, "", ""}) + " is described in line " +
               std::to_string(line_at(model.source(), std::max(there->table->heading.begin, there->table->span.begin)));
    return {};
}

std::string why_fixed(const SourceModel& model, const EditRules& rules, const Address& address) {
    const std::string screen = model.screen(rules.screen);
    const std::string role = address.of == Of::slot ? role_of_fixed_slot(screen, address.index) : "";
    return role.empty()
               ? ""
               : "the program knows this slot by its number: slot " + std::to_string(address.index) + " is the " + role;
}

/// Lines as somebody gave them, in the line ends of the source.
std::string with_line_ends(std::string_view text, std::string_view end) {
    std::string out;
    for (std::string_view line : lines_of(text)) {
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        out.append(line).append(end);
    }
    return out;
}

/// The subject's record as a table by itself; a group's without the group.
class SingleRecord {
public:
    SingleRecord(const SourceModel& model, const Subject& subject, int position)
        : model_(model), subject_(subject), record_(*subject.record), position_(position), edits_(model.source()) {}

    /// The reason when that is not possible. `index`: the number that the copy gets.
    std::string make(int index) {
        const Node* const number = record_.table->find("index");
        edits_.replace(number->span, std::to_string(index));
        if (record_.table->find("repeat"))
            if (std::string reason = leave_group(); !reason.empty())
                return reason;
        return {};
    }

    /// What only one record may have: the places of its looks among the toggle records.
    void drop_places() {
        if (model_.record_subject(record_, "pressed").layers.empty())
            return;
        drop(*record_.table, "activated");
        if (const Node* const own = record_.table->table("pressed"))
            drop(*own, "index");
    }

    /// Its lines.
    std::string text() const {
        std::string out;
        for (const Span& piece : pieces_of(*record_.table))
            out += edits_.result_of(piece);
        if (!out.ends_with('\n'))
            out += line_end_of(model_.source());
        return out;
    }

private:
    void drop(const Node& table, std::string_view key) {
        if (const Member* const found = table.member(key))
            remove_member(edits_, *found);
    }

    std::string leave_group() {
        const auto& members = record_.table->members;
        drop(*record_.table, "repeat");
        for (const Member& member : members)
            if (std::string reason = leave_list(*record_.table, member, true); !reason.empty())
                return reason;
        for (const char* look : {"highlight", "pressed"})
            if (const Node* const table = record_.table->table(look))
                for (const Member& member : table->members)
                    if (std::string reason = leave_list(*table, member, false); !reason.empty())
                        return reason;
        if (const Node* const repeat = record_.table->table("repeat"))
            for (const Member& step : repeat->members)
                if (const auto distance = step_of(record_, step.key); distance && find_number_field(step.key) &&
                                                                      !record_.table->find(step.key) &&
                                                                      *distance != 0 && position_ != 0)
                    if (std::string reason =
                            add_member(edits_, *record_.table, step.key,
                                       value_at(model_, subject_, step.key, position_, *distance * position_));
                        !reason.empty())
                        return reason;
        return move_pressed();
    }

    /// A field that the record says: its entry of a list, and what the group adds.
    std::string leave_list(const Node& table, const Member& member, bool of_record) {
        const Field* const field = find_field(member.key);
        if (!field ||
            (field->form != FieldForm::number && field->form != FieldForm::text && field->form != FieldForm::word))
            return {};
        const auto step = of_record ? step_of(record_, member.key) : 0;
        if (!step)
            return "repeat." + member.key + " is no plain number";
        const auto leaves = leaves_of(member.value, record_.count);
        if (!leaves)
            return leaves.reason();
        const bool in_list =
            std::ranges::any_of(*leaves, [](const Leaf& leaf) { return leaf.position != every_position; });
        if (in_list && member.value.span.end == member.value.span.begin)
            return member.key + " has lists in lines of their own: a list for both languages can be written out";
        const std::int64_t added = *step * position_;
        if (in_list) {
            Subject subject = of_record ? subject_ : model_.record_subject(record_, table_name(table));
            edits_.replace(member.value.span, value_at(model_, subject, member.key, position_, added));
            return {};
        }
        for (const Leaf& leaf : *leaves) {
            if (added == 0)
                continue;
            const auto number = model_.number(*leaf.node, field->meaning);
            if (!number)
                return member.key + " is no number";
            edits_.replace(leaf.node->span, std::to_string(*number + added));
        }
        return {};
    }

    std::string table_name(const Node& table) const {
        return record_.table->table("highlight") == &table ? "highlight" : "pressed";
    }

    /// The toggle record of the pressed look goes along with the index.
    std::string move_pressed() {
        const Node* const own = record_.table->table("pressed");
        const Node* const place = own ? own->find("index") : nullptr;
        const auto number = place ? model_.number(*place, Meaning::number) : std::nullopt;
        if (number && position_ != 0)
            edits_.replace(place->span, std::to_string(*number + std::int64_t{position_} * record_.step));
        return {};
    }

    const SourceModel& model_;
    const Subject& subject_;
    const RecordTable& record_;
    int position_;
    TextEdits edits_;
};

/// Whether two sources describe the same records; also when one has mistakes, which then only the other may not.
/// Aligned texts are measured in letters: what is the same with these is so with any font.
bool same_records(const std::string& before, const std::string& after) {
    const TextMeasure letters{true, [](int, std::string_view text) { return static_cast<int>(text.size()); },
                              [](int) { return 1; },
                              [](const Slot& slot) { return std::pair(slot.dest_x, slot.dest_y); }};
    const ScreenSource old = read_screen_source(before, letters);
    return !old.faults.empty() || describes(after, old.screen, letters);
}

/// Takes a table and its comment away.
std::string without(const std::string& text, const std::vector<Span>& pieces) {
    TextEdits edits(text);
    for (const Span& piece : joined(text, pieces))
        edits.replace(with_surroundings(text, piece), "");
    std::string result = edits.result();
    if (!text.ends_with('\n') && pieces.back().end == text.size()) // the last line has no end again
        while (result.ends_with('\n') || result.ends_with('\r'))
            result.pop_back();
    return result;
}

/// Numbers that refer to records.
class Renumbering {
public:
    Renumbering(Opened& at, int to)
        : edits_(at.edits), model_(at.model), moved_(*at.subject.record), distance_(to - moved_.index()),
          lit_(present_number(at.model, at.subject, "toggle", 0).value_or(0) > 0) {}

    std::string run() {
        if (std::string reason = why_not(moved_); !reason.empty())
            return reason;
        shift(*moved_.table, "index");
        if (moved_.kind == Of::slot) {
            // A slot is highlighted by the toggle record of its own number.
            if (const Node* const toggle = moved_.table->find("toggle");
                toggle && toggle->kind == Node::Kind::number && toggle->number > 0)
                shift(*moved_.table, "toggle");
            for (const RecordTable& record : model_.tables(Of::toggle)) {
                if (is_moved(record.table->find("copy")))
                    shift(*record.table, "copy");
                if (const int met = met_by(record); lit_ && met > 0)
                    if (std::string reason = move_toggles(record, met); !reason.empty())
                        return reason;
            }
        } else {
            move_activated();
        }
        return {};
    }

private:
    bool is_moved(std::int64_t number) const {
        for (int position = 0; position < moved_.count; ++position)
            if (moved_.index_of(position) == number)
                return true;
        return false;
    }
    bool is_moved(const Node* node) const {
        const auto number = node ? model_.number(*node, Meaning::number) : std::nullopt;
        return number && is_moved(*number);
    }

    /// How many records of a table have the number of a moved one.
    int met_by(const RecordTable& record) const {
        int met = 0;
        for (int position = 0; position < record.count; ++position)
            met += is_moved(record.index_of(position)) ? 1 : 0;
        return met;
    }

    /// Why the records cannot all move.
    std::string why_not(const RecordTable& record) const {
        for (int position = 0; position < record.count; ++position) {
            const int to = record.index_of(position) + distance_;
            const auto there = model_.find(record.kind, to);
            const bool in_way = !there || there->table != record.table; // it moves out of its own way
            if (std::string reason = in_way ? why_not_index(model_, record.kind, to) : ""; !reason.empty())
                return reason;
        }
        return {};
    }

    std::string move_toggles(const RecordTable& record, int met) {
        if (met < record.count)
            return "the group of toggle record " + std::to_string(record.first) +
                   " would be torn apart: split it first";
        if (std::string reason = why_not(record); !reason.empty())
            return reason;
        shift(*record.table, "index");
        move_activated();
        return {};
    }

    /// Every table that names a moved toggle record as its pressed look.
    void move_activated() {
        for (const RecordTable& record : model_.tables(Of::slot))
            move_activated(*record.table);
        if (const Node* const styles = model_.root().find("style"))
            for (const Member& style : styles->members)
                move_activated(style.value);
    }

    void move_activated(const Node& table) {
        if (is_moved(table.find("activated")))
            shift(table, "activated");
    }

    void shift(const Node& table, std::string_view field) {
        const Node& node = *table.find(field);
        if (const auto number = model_.number(node, Meaning::number))
            edits_.replace(node.span, std::to_string(*number + distance_));
    }

    TextEdits& edits_;
    const SourceModel& model_;
    const RecordTable& moved_;
    int distance_;
    bool lit_; ///< a slot that is highlighted by the toggle record of its number
};

/// What the operation is about, when it is about one record or style.
Result<Opened> open_only(const std::string& text, const Operation& operation) {
    if (operation.of.size() != 1 || !operation.of.front().look.empty())
        return Failure{"this is for one record at a time"};
    return open(text, operation.of.front());
}

} // namespace

Result<std::string> create_record(const std::string& text, const Operation& operation) {
    const Address what = operation.of.empty() ? Address() : operation.of.front();
    const auto model = SourceModel::read(text);
    if (!model)
        return Failure{model.reason()};
    const std::string end(line_end_of(text));
    const std::string body = with_line_ends(operation.text, end);
    TextEdits edits(text);
    if (what.of == Of::style) {
        const auto quoted = quoted_text(what.style);
        const bool bare = !what.style.empty() && std::ranges::all_of(what.style, [](unsigned char c) {
            return c < 0x80 && (std::isalnum(c) || c == '_' || c == '-');
        });
        if (style_of(model->root(), what.style) || !quoted)
            return Failure{"there is a [style." + what.style + "] already"};
        const auto slots = model->tables(Of::slot);
        const std::string lines = "[style." + (bare ? what.style : *quoted) + "]" + end + body;
        if (slots.empty() || slots.front().table->heading.end == 0)
            add_lines(edits, text.size(), text.empty() ? lines : end + lines);
        else
            edits.insert(with_surroundings(text, {slots.front().table->heading.begin, text.size()}).begin, lines + end);
        return edits.result();
    }
    if (what.of == Of::window)
        return Failure{"windows are made in the file of text windows"};
    if (std::string reason = why_not_index(*model, what.of, operation.to); !reason.empty())
        return Failure{std::move(reason)};
    add_record(edits, *model, what.of, operation.to,
               "[[" + std::string(key_of(what.of)) + "]]" + end + "index = " + std::to_string(operation.to) + end +
                   body);
    return edits.result();
}

Result<std::string> copy_record(const std::string& text, const Operation& operation) {
    auto at = open_only(text, operation);
    if (!at)
        return Failure{at.reason()};
    auto& [model, subject, edits] = *at;
    if (!subject.record || pieces_of(*subject.home).empty())
        return Failure{"only records with a heading of their own can be copied"};
    const Of kind = subject.record->kind;
    if (std::string reason = why_not_index(model, kind, operation.to); !reason.empty())
        return Failure{std::move(reason)};
    SingleRecord single(model, subject, subject.record->position);
    if (std::string reason = single.make(operation.to); !reason.empty())
        return Failure{std::move(reason)};
    single.drop_places();
    add_record(edits, model, kind, operation.to, single.text());
    return edits.result();
}

Result<std::string> split_group(const std::string& text, const Address& address) {
    auto at = open(text, address);
    if (!at)
        return Failure{at.reason()};
    auto& [model, subject, edits] = *at;
    if (!subject.record || !subject.look.empty())
        return Failure{"only groups of records can be written out"};
    const RecordTable& record = *subject.record;
    if (!record.table->find("repeat"))
        return Failure{name_of(address) + " is in no group"};
    const std::vector<Span> pieces = pieces_of(*record.table);
    if (pieces.empty())
        return Failure{"the record has no heading of its own"};
    std::string lines;
    for (int position = 0; position < record.count; ++position) {
        SingleRecord single(model, subject, position);
        if (std::string reason = single.make(record.index_of(position)); !reason.empty())
            return Failure{std::move(reason)};
        lines += (position > 0 ? std::string(line_end_of(text)) : "") + single.text();
    }
    if (pieces.back().end == text.size() && !text.ends_with('\n'))
        lines.resize(lines.size() - line_end_of(text).size());
    edits.replace(pieces.front(), lines);
    for (auto piece = pieces.begin() + 1; piece != pieces.end(); ++piece)
        edits.replace(*piece, "");
    std::string result = edits.result();
    if (!same_records(text, result))
        return Failure{"the group cannot be written out so that each record stays as it is"};
    return result;
}

Result<std::string> remove_record(const std::string& text, const Address& address, const EditRules& rules) {
    const auto at = open(text, address);
    if (!at)
        return Failure{at.reason()};
    if (std::string reason = why_fixed(at->model, rules, address); !reason.empty())
        return Failure{std::move(reason)};
    if (!address.look.empty())
        return Failure{"a look is taken away by unsetting it"};
    if (at->subject.record && at->subject.record->count > 1) {
        const auto split = split_group(text, address);
        return split ? remove_record(*split, address, rules) : split;
    }
    const std::vector<Span> pieces = pieces_of(*at->subject.home);
    if (pieces.empty())
        return Failure{"the record has no heading of its own"};
    return without(text, pieces);
}

Result<std::string> renumber_record(const std::string& text, const Operation& operation, const EditRules& rules) {
    auto at = open_only(text, operation);
    if (!at)
        return Failure{at.reason()};
    if (!at->subject.record)
        return Failure{"a style has no number"};
    const RecordTable& record = *at->subject.record;
    for (int position = 0; position < record.count; ++position)
        if (std::string reason = why_fixed(at->model, rules, {record.kind, record.index_of(position), "", ""});
            !reason.empty())
            return Failure{std::move(reason)};
    if (std::string reason = Renumbering(*at, operation.to).run(); !reason.empty())
        return Failure{std::move(reason)};
    return at->edits.result();
}

} // namespace vcc::kit::edit
