#include "vcckit/edit/field_edit.h"

#include "vcckit/source/record_lines.h"
#include "vcckit/text/latin1.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

/// Values as the source writes them, by repetition and language.
using Matrix = std::vector<std::array<std::string, languages.size()>>;

bool varies(FieldForm form) {
    return form == FieldForm::number || form == FieldForm::text || form == FieldForm::word;
}

int count_of(const Subject& subject) {
    return subject.record ? subject.record->count : 1;
}

int position_of(const Subject& subject) {
    return subject.record ? subject.record->position : 0;
}

/// What the group adds for each repetition; looks are made of the record that has it already.
std::optional<std::int64_t> own_step(const Subject& subject, std::string_view field) {
    return subject.record && subject.look.empty() ? step_of(*subject.record, field) : 0;
}

const Node* leaf_at(const Node& value, int count, std::size_t language, int position) {
    return part_of(value, languages[language].code, position, count, "", tell_nobody);
}

/// The value that counts; null when no layer says the field.
const Node* present_leaf(const Subject& subject, std::string_view field, std::size_t language, int position) {
    for (auto layer = subject.layers.rbegin(); layer != subject.layers.rend(); ++layer)
        if (const Node* const value = layer->table->find(field))
            return leaf_at(*value, count_of(subject), language, position);
    return nullptr;
}

int base_position(const Subject& subject, int position) {
    return subject.look.empty() ? position_of(subject.base.front()) : position;
}

std::optional<std::int64_t> number_without_step(const SourceModel& model, const Subject& subject, const Field& field,
                                                std::size_t language, int position) {
    if (const Node* const leaf = present_leaf(subject, field.name, language, position))
        return model.number(*leaf, field.meaning);
    if (!subject.base.empty()) {
        const Subject& base = subject.base.front();
        const int at = base_position(subject, position);
        const auto number = number_without_step(model, base, field, language, at);
        const auto step = own_step(base, field.name);
        return number && step ? std::optional(*number + *step * at) : std::nullopt;
    }
    if (field.name != "toggle")
        return 0;
    const bool lit = subject.record && subject.record->kind == Address::Of::slot &&
                     !model.record_subject(*subject.record, "highlight").layers.empty();
    return lit ? subject.record->index_of(position) : -1;
}

std::string raw_text(const SourceModel& model, const Subject& subject, const Field& field, std::size_t language,
                     int position) {
    if (const Node* const leaf = present_leaf(subject, field.name, language, position))
        return std::string(model.text_at(leaf->span));
    if (field.form == FieldForm::number)
        return model.written(number_without_step(model, subject, field, language, position).value_or(0), field.meaning);
    if (!subject.base.empty())
        return raw_text(model, subject.base.front(), field, language, base_position(subject, position));
    return field.form == FieldForm::word ? "\"left\"" : "\"\"";
}

/// One value where all are the same, else tables by language, lists by repetition, or both.
std::string compressed(const Matrix& matrix) {
    if (std::ranges::all_of(matrix, [&](const auto& row) { return row == matrix.front(); }))
        return by_language(matrix.front());
    std::string list = "[";
    for (const auto& row : matrix)
        list += (list.size() > 1 ? ", " : "") + by_language(row);
    return list + "]";
}

/// A value on its way into the source.
struct Wanted {
    std::string reason;                 ///< why it cannot be one
    std::optional<std::int64_t> number; ///< of number fields given by number
    std::string text;                   ///< as the source writes it, in a place where nothing was
};

/// "button, wide": a list when there are several.
Wanted wanted_styles(const SourceModel& model, const std::string& text) {
    std::vector<std::string> names;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t comma = std::min(text.find(',', at), text.size());
        std::string name = text.substr(at, comma - at);
        name.erase(0, std::min(name.find_first_not_of(' '), name.size()));
        name.erase(name.find_last_not_of(' ') + 1);
        if (!style_of(model.root(), name))
            return {"there is no [style." + name + "]", {}, ""};
        names.push_back(quoted_text(name).value_or(""));
        at = comma + 1;
    }
    if (names.size() == 1)
        return {"", {}, names.front()};
    std::string list = "[";
    for (const std::string& name : names)
        list += (list.size() > 1 ? ", " : "") + name;
    return {"", {}, list + "]"};
}

Wanted wanted_value(const SourceModel& model, const Field& field, const Value& value) {
    const auto* const number = std::get_if<std::int64_t>(&value);
    const auto* const text = std::get_if<std::string>(&value);
    const auto* const flag = std::get_if<bool>(&value);
    const bool fits = number && *number >= INT32_MIN && *number <= INT32_MAX;
    const auto wrong = [&](const char* kind) { return Wanted{std::string(field.name) + " must be " + kind, {}, ""}; };
    switch (field.form) {
    case FieldForm::shadow:
        if (flag)
            return {"", {}, *flag ? "true" : "false"};
        [[fallthrough]];
    case FieldForm::number:
        if (const auto named = text ? model.number_of(field.meaning, *text) : std::nullopt)
            return {"", named, quoted_text(*text).value_or("")};
        if (text)
            return {"there is no " + std::string(meaning_word(field.meaning)) + " \"" + *text + "\"", {}, ""};
        if (!number)
            return wrong("a number or a name");
        if (!fits)
            return {std::to_string(*number) + " does not fit in 32 bits", {}, ""};
        return {"", *number, model.written(*number, field.meaning)};
    case FieldForm::pair:
    case FieldForm::plain:
        return fits ? Wanted{"", {}, std::to_string(*number)} : wrong("a number");
    case FieldForm::word:
        if (!text || (*text != "left" && *text != "centre" && *text != "right"))
            return wrong("left, centre or right");
        [[fallthrough]];
    case FieldForm::text:
        if (auto quoted = text ? quoted_text(*text) : std::nullopt)
            return {"", {}, std::move(*quoted)};
        return wrong(text ? "UTF-8" : "a text");
    case FieldForm::styles:
        return text ? wanted_styles(model, *text) : wrong("the name of a style");
    case FieldForm::flag:
    case FieldForm::look:
        break;
    }
    if (!flag)
        return wrong("true or false");
    return {"", {}, *flag ? (field.form == FieldForm::look ? "{}" : "true") : "false"};
}

/// Replaces a value. A text with characters outside ASCII must not touch the word before it.
void replace_value(TextEdits& edits, const Span& span, std::string text) {
    const bool ascii = std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    const char before = span.begin > 0 ? edits.source()[span.begin - 1] : ' ';
    if (!ascii && std::string_view(" \t\n,").find(before) == std::string_view::npos)
        text.insert(0, " ");
    edits.replace(span, std::move(text));
}

/// A field of one table on its way to a new value.
class FieldChange {
public:
    FieldChange(Opened& at, const Field& field)
        : edits_(at.edits), model_(at.model), subject_(at.subject), field_(field) {}

    std::string set(const LanguageSet& in, const Wanted& wanted) {
        const Node* const own = subject_.own ? subject_.own->find(field_.name) : nullptr;
        if (!varies(field_.form))
            return own ? replace_plain(*own, wanted) : add(wanted.text);
        const auto step = own_step(subject_, field_.name);
        if (!step)
            return "repeat." + std::string(field_.name) + " is no plain number";
        base_ = wanted.number ? std::optional(*wanted.number - *step * position_of(subject_)) : std::nullopt;
        if (base_ && (*base_ < INT32_MIN || *base_ > INT32_MAX))
            return "the group's first record would not fit in 32 bits";
        text_ = base_ && base_ != wanted.number ? std::to_string(*base_) : wanted.text;
        return own ? change(*own, in) : add_varying(in);
    }

    std::string shift(const LanguageSet& in, const std::set<int>& positions, std::int64_t distance) {
        const Node* const own = subject_.own ? subject_.own->find(field_.name) : nullptr;
        if (!own) {
            Matrix matrix = present();
            for (int position = 0; position < count_of(subject_); ++position)
                for (std::size_t i = 0; i < languages.size(); ++i) {
                    if (!in[i])
                        continue;
                    const auto number = number_without_step(model_, subject_, field_, i, position);
                    if (!number)
                        return std::string(field_.name) + " is no number";
                    matrix[static_cast<std::size_t>(position)][i] = std::to_string(*number + distance);
                }
            return add(compressed(matrix));
        }
        const auto leaves = leaves_of(*own, count_of(subject_));
        if (!leaves)
            return leaves.reason();
        for (const Leaf& leaf : *leaves) {
            if (!meets(leaf, in) || (leaf.position != every_position && !positions.contains(leaf.position)))
                continue;
            const auto number = model_.number(*leaf.node, field_.meaning);
            if (!number)
                return std::string(field_.name) + " is no number";
            text_ = std::to_string(*number + distance);
            write(leaf, in, false);
        }
        return {};
    }

private:
    static bool meets(const Leaf& leaf, const LanguageSet& in) {
        for (std::size_t i = 0; i < in.size(); ++i)
            if (leaf.in[i] && in[i])
                return true;
        return false;
    }

    std::string replace_plain(const Node& own, const Wanted& wanted) {
        if (field_.form == FieldForm::look && own.is_table() && wanted.text == "{}")
            return {}; // it has one
        if (own.span.end == own.span.begin)
            return std::string(field_.name) + " has lines of its own: take them away first";
        const bool same_number = wanted.number && own.kind == Node::Kind::number && own.number == *wanted.number;
        const std::string_view old = model_.text_at(own.span);
        if (old != wanted.text && !same_number)
            replace_value(edits_, own.span, wanted.text);
        return {};
    }

    /// Whether a value says what is wanted already, in whatever spelling.
    bool is_there(const Node& leaf) const {
        if (base_ && text_.front() == '"' && leaf.kind == Node::Kind::text)
            return model_.text_at(leaf.span) == text_ ||
                   (given_by_number_ && model_.number(leaf, field_.meaning) == base_);
        if (base_)
            return model_.number(leaf, field_.meaning) == base_;
        const auto quoted = leaf.kind == Node::Kind::text ? quoted_text(leaf.text) : std::nullopt;
        return quoted == text_;
    }

    std::string change(const Node& own, const LanguageSet& in) {
        const auto leaves = leaves_of(own, count_of(subject_));
        if (!leaves)
            return leaves.reason();
        LanguageSet met{};
        for (const Leaf& leaf : *leaves) {
            const bool is_here = leaf.position == every_position || leaf.position == position_of(subject_);
            if (!is_here || !meets(leaf, in))
                continue;
            for (std::size_t i = 0; i < in.size(); ++i)
                met[i] = met[i] || leaf.in[i];
            if (!is_there(*leaf.node))
                write(leaf, in,
                      field_.form != FieldForm::number && leaf.position == every_position && count_of(subject_) > 1);
        }
        for (std::size_t i = 0; i < in.size(); ++i)
            if (in[i] && !met[i]) {
                if (!own.is_table())
                    return std::string(field_.name) + " has no value for the language " +
                           std::string(languages[i].code) + ": write one first";
                if (std::string reason = add_member(edits_, own, languages[i].code, text_); !reason.empty())
                    return reason;
            }
        return {};
    }

    /// Writes the wanted text into a value; the languages and repetitions that keep the old one get it beside the new.
    void write(const Leaf& leaf, const LanguageSet& in, bool one_of_list) {
        const std::string old(model_.text_at(leaf.node->span));
        std::string text = spelled_like(*leaf.node);
        std::array<std::string, languages.size()> parts;
        bool shared = false;
        for (std::size_t i = 0; i < in.size(); ++i) {
            shared = shared || (leaf.in[i] && !in[i]);
            parts[i] = in[i] ? text : old;
        }
        if (shared)
            text = by_language(parts);
        if (one_of_list) {
            std::string list = "[";
            for (int i = 0; i < count_of(subject_); ++i)
                list += (i > 0 ? ", " : "") + (i == position_of(subject_) ? text : old);
            text = list + "]";
        }
        if (text != old)
            replace_value(edits_, leaf.node->span, std::move(text));
    }

    /// Digits stay digits.
    std::string spelled_like(const Node& leaf) const {
        return base_ && given_by_number_ && leaf.kind == Node::Kind::number ? std::to_string(*base_) : text_;
    }

    Matrix present() const {
        Matrix matrix(static_cast<std::size_t>(count_of(subject_)));
        for (std::size_t position = 0; position < matrix.size(); ++position)
            for (std::size_t i = 0; i < languages.size(); ++i)
                matrix[position][i] = raw_text(model_, subject_, field_, i, static_cast<int>(position));
        return matrix;
    }

    /// No table of the subject says the field: the record gets it, with what others keep of their styles' value.
    std::string add_varying(const LanguageSet& in) {
        Matrix matrix = present();
        const bool alike = std::ranges::all_of(matrix, [&](const auto& row) { return row == matrix.front(); });
        for (std::size_t position = 0; position < matrix.size(); ++position) {
            const bool is_here = static_cast<int>(position) == position_of(subject_);
            if (!is_here && (field_.form != FieldForm::number || !alike))
                continue;
            for (std::size_t i = 0; i < in.size(); ++i)
                if (in[i])
                    matrix[position][i] = text_;
        }
        return add(compressed(matrix));
    }

    std::string add(const std::string& value) {
        if (subject_.own)
            return add_member(edits_, *subject_.own, field_.name, value);
        const std::string look = "{ " + std::string(field_.name) + " = " + value + " }";
        const Node* const there = subject_.home->find(subject_.look);
        if (!there)
            return add_member(edits_, *subject_.home, subject_.look, look);
        edits_.replace(there->span, look); // highlight = false
        return {};
    }

    TextEdits& edits_;
    const SourceModel& model_;
    const Subject& subject_;
    const Field& field_;
    std::optional<std::int64_t> base_; ///< number fields: the number to write
    std::string text_;                 ///< the same as the source writes it

public:
    bool given_by_number_ = true;
};

LanguageSet chosen(std::optional<std::size_t> language) {
    LanguageSet in{};
    if (language)
        in[*language] = true;
    else
        in.fill(true);
    return in;
}

std::string unknown_field(std::string_view field) {
    return "there is no field \"" + std::string(field) + "\"";
}

/// "repeat.count": the table, and the member of it that is meant.
std::optional<std::string_view> repeat_entry(std::string_view field) {
    constexpr std::string_view beginning = "repeat.";
    return field.starts_with(beginning) ? std::optional(field.substr(beginning.size())) : std::nullopt;
}

std::string set_repeat(Opened& at, std::string_view entry, const Value& value) {
    auto& [model, subject, edits] = at;
    if (!subject.record || !subject.look.empty())
        return "only records repeat";
    if (entry != "count" && entry != "step" && !find_number_field(entry))
        return unknown_field("repeat." + std::string(entry));
    const Wanted wanted = wanted_value(model, {entry, FieldForm::plain}, value);
    if (!wanted.reason.empty())
        return wanted.reason;
    const Node* const repeat = subject.own->table("repeat");
    const std::string line = (entry == "count" ? "{ count = " : "{ count = 1, " + std::string(entry) + " = ");
    if (!repeat)
        return add_member(edits, *subject.own, "repeat", line + wanted.text + " }");
    const Node* const there = repeat->find(entry);
    if (!there)
        return add_member(edits, *repeat, entry, wanted.text);
    if (there->span.end == there->span.begin)
        return "repeat." + std::string(entry) + " is no plain number";
    if (there->kind != Node::Kind::number || std::to_string(there->number) != wanted.text)
        edits.replace(there->span, wanted.text);
    return {};
}

/// Why a subject does not take a field that records know.
std::string misfit(const Subject& subject, const Field& field) {
    const bool pressed = subject.look == "pressed";
    if (field.name == "index" && !pressed)
        return "a record gets another number by renumbering it";
    const bool toggle = subject.record && subject.record->kind == Address::Of::toggle;
    if (field.name == "copy" && !toggle)
        return "only a toggle record is made as a copy";
    if ((field.form == FieldForm::look || field.form == FieldForm::styles) && !subject.look.empty())
        return "a look has no " + std::string(field.name);
    if (field.form == FieldForm::look && toggle)
        return "a toggle record has no looks";
    return {};
}

} // namespace

std::string set_field(Opened& at, std::string_view field, std::optional<std::size_t> language, const Value& value) {
    if (const auto entry = repeat_entry(field))
        return set_repeat(at, *entry, value);
    const Field* const info = find_field(field);
    if (!info)
        return unknown_field(field);
    if (std::string reason = misfit(at.subject, *info); !reason.empty())
        return reason;
    if (language && !varies(info->form))
        return std::string(field) + " is the same in every language";
    const Wanted wanted = wanted_value(at.model, *info, value);
    if (!wanted.reason.empty())
        return wanted.reason;
    FieldChange change(at, *info);
    change.given_by_number_ = std::holds_alternative<std::int64_t>(value);
    return change.set(chosen(language), wanted);
}

std::string unset_field(Opened& at, std::string_view field, std::optional<std::size_t> language) {
    auto& [model, subject, edits] = at;
    const auto entry = repeat_entry(field);
    const Field* const info = find_field(field);
    if (!entry && !info && field != "repeat")
        return unknown_field(field);
    const Node* const table = entry && subject.own ? subject.own->table("repeat") : subject.own;
    const std::string_view key = entry ? *entry : field;
    const Member* const found = table ? table->member(key) : nullptr;
    if (!found)
        return std::string(field) + " is not written there";
    if (info && field == "index" && subject.look != "pressed")
        return "every record says where it stands";
    if (!language) {
        remove_member(edits, *found);
        return {};
    }
    // The value of the other language is then everybody's.
    const Node& value = found->value;
    const auto leaves = leaves_of(value, 1);
    const Node* const kept = leaves && value.is_table() ? leaf_at(value, 1, 1 - *language, 0) : nullptr;
    static_assert(languages.size() == 2);
    if (!kept || !value.find(languages[*language].code))
        return std::string(field) + " has no value of its own for the language " +
               std::string(languages[*language].code);
    if (value.form == Node::Form::braces) {
        replace_value(edits, value.span, std::string(model.text_at(kept->span)));
        return {};
    }
    if (value.form != Node::Form::dotted)
        return std::string(field) + " has lines of its own: take them away first";
    for (const Member& member : value.members)
        if (member.key == languages[*language].code)
            remove_member(edits, member);
        else
            edits.replace(member.key_span, table->prefix + std::string(field));
    return {};
}

std::string shift_field(Opened& at, std::string_view field, const LanguageSet& in, const std::set<int>& positions,
                        std::int64_t distance) {
    const Field* const info = find_field(field);
    if (!info || info->form != FieldForm::number)
        return unknown_field(field);
    return FieldChange(at, *info).shift(in, positions, distance);
}

std::optional<std::int64_t> present_number(const SourceModel& model, const Subject& subject, std::string_view field,
                                           std::size_t language) {
    const Field* const info = find_field(field);
    const auto step = own_step(subject, field);
    if (!info || !step)
        return std::nullopt;
    const auto number = number_without_step(model, subject, *info, language, position_of(subject));
    return number ? std::optional(*number + *step * position_of(subject)) : std::nullopt;
}

std::string present_text(const SourceModel& model, const Subject& subject, std::string_view field,
                         std::size_t language) {
    const Node* const leaf = present_leaf(subject, field, language, position_of(subject));
    if (!leaf && !subject.base.empty())
        return present_text(model, subject.base.front(), field, language);
    return leaf ? leaf->text : "";
}

std::string value_at(const SourceModel& model, const Subject& subject, std::string_view field, int position,
                     std::int64_t add) {
    const Field* const info = find_field(field);
    std::array<std::string, languages.size()> values;
    for (std::size_t i = 0; info && i < languages.size(); ++i) {
        const auto number = add == 0 ? std::nullopt : number_without_step(model, subject, *info, i, position);
        values[i] = number ? std::to_string(*number + add) : raw_text(model, subject, *info, i, position);
    }
    return by_language(values);
}

} // namespace vcc::kit::edit
