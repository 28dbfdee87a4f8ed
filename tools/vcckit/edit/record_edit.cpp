#include "vcckit/edit/document_kinds.h"

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
#include <set>

namespace vcc::kit::edit {

namespace {

using Of = Address::Of;

/// Refuses a number that a record cannot get.
void expect_free(const SourceModel& model, Of kind, int index) {
    if (index < 0 || index >= slot_limit)
        throw Refused("numbers are 0 to " + std::to_string(slot_limit - 1));
    if (const auto there = model.find(kind, index))
        throw Refused(
            name_of({kind, index}) + " is described in line " +
            std::to_string(line_at(model.source(), std::max(there->table->heading.begin, there->table->span.begin))));
}

/// Refuses a slot that has to keep its number.
void expect_not_fixed(const SourceModel& model, const std::string& screen, Of kind, int index) {
    const std::string role = kind == Of::slot ? role_of_fixed_slot(screen_name(model.root(), screen), index) : "";
    if (!role.empty())
        throw Refused("the program knows this slot by its number: slot " + std::to_string(index) + " is the " + role);
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

bool has_list(const Node& value) {
    return value.kind == Node::Kind::list ||
           std::ranges::any_of(value.members, [](const Member& each) { return has_list(each.value); });
}

/// The subject's record as a table by itself; a group's without the group.
class SingleRecord {
public:
    SingleRecord(const SourceModel& model, const Subject& subject, int position)
        : model_(model), record_(*subject.record), position_(position), edits_(model.source()) {
        const auto& members = record_.table->members;
        if (!record_.table->find("repeat"))
            return;
        drop(*record_.table, "repeat");
        for (const Member& member : members)
            leave_list(subject, member);
        for (const char* const look : {"highlight", "pressed"})
            if (const Node* const table = record_.table->table(look))
                for (const Member& member : table->members)
                    leave_list(model_.record_subject(record_, look), member);
        add_steps(subject);
        move_pressed();
    }

    void renumber(int index) { edits_.replace(record_.table->find("index")->span, std::to_string(index)); }

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

    /// A field that the record or a look of it says: its entry of a list, and what the group adds.
    void leave_list(const Subject& subject, const Member& member) {
        const Field* const field = find_field(member.key);
        if (!field || !varies(*field))
            return;
        const auto step = subject.look.empty() ? step_of(record_, member.key) : 0;
        if (!step)
            throw Refused("repeat." + member.key + " is no plain number");
        const std::int64_t added = *step * position_;
        std::set<const Node*> parts;
        for (std::size_t i = 0; i < languages.size(); ++i)
            parts.insert(part_at(member.value, i, position_, record_.count));
        parts.erase(nullptr);
        if (has_list(member.value)) {
            if (member.value.span.end == member.value.span.begin)
                throw Refused(member.key +
                              " has lists in lines of their own: a list for both languages can be written out");
            edits_.replace(member.value.span, value_at(model_, subject, *field, position_, added));
        } else if (added != 0) {
            for (const Node* const part : parts) {
                const auto number = model_.number(*part, field->meaning);
                if (!number)
                    throw Refused(member.key + " is no number");
                edits_.replace(part->span, std::to_string(*number + added));
            }
        }
    }

    /// Fields that only styles say, and to which the group adds.
    void add_steps(const Subject& subject) {
        const Node* const repeat = record_.table->table("repeat");
        if (!repeat || position_ == 0)
            return;
        for (const Member& step : repeat->members) {
            const Field* const field = find_number_field(step.key);
            const auto distance = step_of(record_, step.key);
            if (field && distance && *distance != 0 && !record_.table->find(step.key))
                add_member(edits_, *record_.table, step.key,
                           value_at(model_, subject, *field, position_, *distance * position_));
        }
    }

    /// The toggle record of the pressed look goes along with the index.
    void move_pressed() {
        const Node* const own = record_.table->table("pressed");
        const Node* const place = own ? own->find("index") : nullptr;
        const auto number = place ? model_.number(*place, Meaning::number) : std::nullopt;
        if (number && position_ != 0)
            edits_.replace(place->span, std::to_string(*number + std::int64_t{position_} * record_.step));
    }

    const SourceModel& model_;
    const RecordTable& record_;
    int position_;
    TextEdits edits_;
};

/// Whether two sources describe the same records; also when one has mistakes, which then only the other may not.
/// Aligned texts are measured in letters: what is the same with these is so with any font.
bool same_records(const std::string& before, const std::string& after) {
    const TextMeasure letters{true, [](int, std::string_view text) { return static_cast<int>(text.size()); },
                              [](int) { return 1; },
                              [](const Slot& slot) {
                                  return Point{slot.dest_x, slot.dest_y};
                              }};
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

    void run() {
        expect_room(moved_);
        shift(*moved_.table, "index");
        if (moved_.kind == Of::toggle)
            return move_activated();
        // A slot is highlighted by the toggle record of its own number.
        if (const Node* const toggle = moved_.table->find("toggle");
            toggle && toggle->is_number() && toggle->number > 0)
            shift(*moved_.table, "toggle");
        for (const RecordTable& record : model_.tables(Of::toggle)) {
            if (is_moved(record.table->find("copy")))
                shift(*record.table, "copy");
            if (const int met = met_by(record); lit_ && met > 0)
                move_toggles(record, met);
        }
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

    /// Refuses when the records cannot all move.
    void expect_room(const RecordTable& record) const {
        for (int position = 0; position < record.count; ++position) {
            const int to = record.index_of(position) + distance_;
            if (const auto there = model_.find(record.kind, to);
                !there || there->table != record.table) // it moves out of its own way
                expect_free(model_, record.kind, to);
        }
    }

    void move_toggles(const RecordTable& record, int met) {
        if (met < record.count)
            throw Refused("the group of toggle record " + std::to_string(record.first) +
                          " would be torn apart: split it first");
        expect_room(record);
        shift(*record.table, "index");
        move_activated();
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
Opened open_only(const std::string& text, const Operation& operation) {
    if (operation.of.size() != 1 || !operation.of.front().look.empty())
        throw Refused("this is for one record at a time");
    return {text, operation.of.front()};
}

std::string create_style(const std::string& text, const SourceModel& model, const std::string& name,
                         const std::string& body) {
    const auto quoted = quoted_text(name);
    const bool bare = !name.empty() && std::ranges::all_of(name, [](unsigned char c) {
        return c < 0x80 && (std::isalnum(c) || c == '_' || c == '-');
    });
    if (style_of(model.root(), name) || !quoted)
        throw Refused("there is a [style." + name + "] already");
    const std::string end(line_end_of(text));
    const std::string lines = "[style." + (bare ? name : *quoted) + "]" + end + body;
    const auto slots = model.tables(Of::slot);
    TextEdits edits(text);
    if (slots.empty() || slots.front().table->heading.end == 0)
        add_lines(edits, text.size(), text.empty() ? lines : end + lines);
    else
        edits.insert(with_surroundings(text, {slots.front().table->heading.begin, text.size()}).begin, lines + end);
    return edits.result();
}

std::string create_record(const std::string& text, const Operation& operation) {
    const Address what = operation.of.empty() ? Address() : operation.of.front();
    const SourceModel model(text);
    const std::string end(line_end_of(text));
    const std::string body = with_line_ends(operation.text, end);
    if (what.of == Of::style)
        return create_style(text, model, what.style, body);
    expect_in_screen(what.of);
    expect_free(model, what.of, operation.to);
    TextEdits edits(text);
    add_record(edits, model, what.of, operation.to,
               "[[" + std::string(key_of(what.of)) + "]]" + end + "index = " + std::to_string(operation.to) + end +
                   body);
    return edits.result();
}

std::string copy_record(const std::string& text, const Operation& operation) {
    Opened at = open_only(text, operation);
    if (!at.subject.record || pieces_of(*at.subject.home).empty())
        throw Refused("only records with a heading of their own can be copied");
    const Of kind = at.subject.record->kind;
    expect_free(at.model, kind, operation.to);
    SingleRecord single(at.model, at.subject, at.subject.record->position);
    single.renumber(operation.to);
    single.drop_places();
    add_record(at.edits, at.model, kind, operation.to, single.text());
    return at.edits.result();
}

std::string split_group(const std::string& text, const Address& address) {
    Opened at(text, address);
    if (!at.subject.record || !at.subject.look.empty())
        throw Refused("only groups of records can be written out");
    const RecordTable& record = *at.subject.record;
    if (!record.table->find("repeat"))
        throw Refused(name_of(address) + " is in no group");
    const std::vector<Span> pieces = pieces_of(*record.table);
    if (pieces.empty())
        throw Refused("the record has no heading of its own");
    std::string lines;
    for (int position = 0; position < record.count; ++position) {
        SingleRecord single(at.model, at.subject, position);
        single.renumber(record.index_of(position));
        lines += (position > 0 ? std::string(line_end_of(text)) : "") + single.text();
    }
    if (pieces.back().end == text.size() && !text.ends_with('\n'))
        lines.resize(lines.size() - line_end_of(text).size());
    at.edits.replace(pieces.front(), lines);
    for (auto piece = pieces.begin() + 1; piece != pieces.end(); ++piece)
        at.edits.replace(*piece, "");
    std::string result = at.edits.result();
    if (!same_records(text, result))
        throw Refused("the group cannot be written out so that each record stays as it is");
    return result;
}

std::string remove_record(const std::string& text, const Address& address, const std::string& screen) {
    const Opened at(text, address);
    expect_not_fixed(at.model, screen, address.of, address.index);
    if (!address.look.empty())
        throw Refused("a look is taken away by unsetting it");
    if (at.subject.record && at.subject.record->count > 1)
        return remove_record(split_group(text, address), address, screen);
    const std::vector<Span> pieces = pieces_of(*at.subject.home);
    if (pieces.empty())
        throw Refused("the record has no heading of its own");
    return without(text, pieces);
}

std::string renumber_record(const std::string& text, const Operation& operation, const std::string& screen) {
    Opened at = open_only(text, operation);
    if (!at.subject.record)
        throw Refused("a style has no number");
    const RecordTable& record = *at.subject.record;
    for (int position = 0; position < record.count; ++position)
        expect_not_fixed(at.model, screen, record.kind, record.index_of(position));
    Renumbering(at, operation.to).run();
    return at.edits.result();
}

} // namespace

std::string change_screen(std::string text, const Operation& operation, const std::string& screen) {
    switch (operation.what) {
    case Operation::Do::create:
        return create_record(text, operation);
    case Operation::Do::move:
    case Operation::Do::resize:
        return move_or_resize(std::move(text), operation);
    case Operation::Do::copy:
        return copy_record(text, operation);
    case Operation::Do::renumber:
        return renumber_record(text, operation, screen);
    default: // to one address after the other, on what the ones before have left
        for (const Address& address : operation.of)
            text = operation.what == Operation::Do::remove  ? remove_record(text, address, screen)
                   : operation.what == Operation::Do::split ? split_group(text, address)
                                                            : change_field(text, address, operation);
        return text;
    }
}

} // namespace vcc::kit::edit
