#include "vcckit/edit/field_edit.h"

#include "vcckit/source/record_lines.h"
#include "vcckit/text/latin1.h"

#include <algorithm>
#include <sstream>

namespace vcc::kit::edit {

namespace {

/// Values as the source writes them, by repetition and language.
using Matrix = std::vector<std::array<std::string, languages.size()>>;

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

/// The value that counts; null when no layer says the field.
const Node* present_leaf(const Subject& subject, std::string_view field, std::size_t language, int position) {
    for (auto layer = subject.layers.rbegin(); layer != subject.layers.rend(); ++layer)
        if (const Node* const value = layer->table->find(field))
            return part_of(*value, languages[language].code, position, count_of(subject), "", tell_nobody);
    return nullptr;
}

int base_position(const Subject& subject, int position) {
    return subject.look.empty() ? position_of(subject.base.front()) : position;
}

std::optional<std::int64_t> number_without_step(const SourceModel& model, const Subject& subject, const Field& field,
                                                std::size_t language, int position) {
    if (const Node* const leaf = present_leaf(subject, field.name, language, position))
        return model.number(*leaf, field.meaning);
    if (!subject.base.empty())
        return present_number(model, subject.base.front(), field.name, language, base_position(subject, position));
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

std::string list_of(const std::vector<std::string>& values) {
    std::string list = "[";
    for (const std::string& value : values)
        list += (list.size() > 1 ? ", " : "") + value;
    return list + "]";
}

/// One value where all are the same, else tables by language, lists by repetition, or both.
std::string compressed(const Matrix& matrix) {
    if (std::ranges::all_of(matrix, [&](const auto& row) { return row == matrix.front(); }))
        return by_language(matrix.front());
    std::vector<std::string> values;
    std::ranges::transform(matrix, std::back_inserter(values), by_language);
    return list_of(values);
}

/// A value on its way into the source.
struct Wanted {
    std::string text;                     ///< as the source writes it, in a place where nothing was
    std::optional<std::int64_t> number{}; ///< of number fields
};

/// "button, wide": a list when there are several.
std::string wanted_styles(const SourceModel& model, const std::string& text) {
    std::vector<std::string> names;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t comma = std::min(text.find(',', at), text.size());
        std::string name = text.substr(at, comma - at);
        name.erase(0, std::min(name.find_first_not_of(' '), name.size()));
        name.erase(name.find_last_not_of(' ') + 1);
        if (!style_of(model.root(), name))
            throw Refused("there is no [style." + name + "]");
        names.push_back(quoted_text(name).value_or(""));
        at = comma + 1;
    }
    return names.size() == 1 ? names.front() : list_of(names);
}

/// "4, 8" or "[4, 8]": two numbers as a source writes them.
std::optional<std::string> pair_of(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '[' || c == ',' || c == ']'; }, ' ');
    std::istringstream parts(text);
    std::int32_t across = 0, down = 0;
    std::string rest;
    if (!(parts >> across >> down) || parts >> rest)
        return std::nullopt;
    return list_of({std::to_string(across), std::to_string(down)});
}

Wanted wanted_value(const SourceModel& model, const Field& field, const Value& value) {
    const auto* const number = std::get_if<std::int64_t>(&value);
    const auto* const text = std::get_if<std::string>(&value);
    const auto* const flag = std::get_if<bool>(&value);
    const bool fits = number && *number >= INT32_MIN && *number <= INT32_MAX;
    const auto expect = [&](bool good, const char* kind) {
        if (!good)
            throw Refused(std::string(field.name) + " must be " + kind);
    };
    switch (field.form) {
    case FieldForm::shadow:
        if (flag)
            return {*flag ? "true" : "false"};
        [[fallthrough]];
    case FieldForm::number:
        if (const auto named = text ? model.number_of(field.meaning, *text) : std::nullopt)
            return {quoted_text(*text).value_or(""), named};
        if (text)
            throw Refused("there is no " + std::string(meaning_word(field.meaning)) + " \"" + *text + "\"");
        expect(number, "a number or a name");
        if (!fits)
            throw Refused(std::to_string(*number) + " does not fit in 32 bits");
        return {model.written(*number, field.meaning), *number};
    case FieldForm::pair:
        if (auto pair = text ? pair_of(*text) : std::nullopt)
            return {std::move(*pair)};
        [[fallthrough]];
    case FieldForm::plain:
        expect(fits, field.form == FieldForm::pair ? "a number, or two of them" : "a number");
        return {std::to_string(*number)};
    case FieldForm::word:
        expect(text && (*text == "left" || *text == "centre" || *text == "right"), "left, centre or right");
        [[fallthrough]];
    case FieldForm::text:
        expect(text, "a text");
        expect(is_utf8(*text), "UTF-8");
        return {*quoted_text(*text)};
    case FieldForm::styles:
        expect(text, "the name of a style");
        return {wanted_styles(model, *text)};
    case FieldForm::flag:
    case FieldForm::look:
        break;
    }
    expect(flag, "true or false");
    return {*flag ? (field.form == FieldForm::look ? "{}" : "true") : "false"};
}

/// Replaces a value. A text with characters outside ASCII must not touch the word before it.
void replace_value(TextEdits& edits, const Span& span, std::string text) {
    const bool ascii = std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    const char before = span.begin > 0 ? edits.source()[span.begin - 1] : ' ';
    if (!ascii && std::string_view(" \t\n,").find(before) == std::string_view::npos)
        text.insert(0, " ");
    edits.replace(span, std::move(text));
}

/// What becomes of a part of a value.
using NextText = std::function<std::string(const Node* part, std::size_t language, int position)>;

/// Changes a value in some languages at some repetitions. Parts that these share with others are written out, but a
/// number that all repetitions share changes for all of them.
void change(Opened& at, const Field& field, const Node& value, const LanguageSet& in, const std::set<int>& positions,
            const NextText& next) {
    const int count = count_of(at.subject);
    const auto part = [&](int position, std::size_t language) { return part_at(value, language, position, count); };
    std::set<const Node*> parts;
    for (int position = 0; position < count; ++position)
        parts.insert({part(position, 0), part(position, 1)});
    parts.erase(nullptr);
    static_assert(languages.size() == 2);
    for (const Node* const each : parts) {
        const std::string old(at.model.text_at(each->span));
        const auto text_in = [&](std::size_t language, int position) {
            const bool taken =
                in[language] && std::ranges::any_of(positions, [&](int chosen) {
                    return chosen == position || (field.form == FieldForm::number && part(chosen, language) == each);
                });
            return taken ? next(each, language, position) : old;
        };
        Matrix texts;
        for (int position = 0; position < count; ++position) {
            const bool here[] = {part(position, 0) == each, part(position, 1) == each};
            if (here[0] || here[1])
                texts.push_back({text_in(here[0] ? 0 : 1, position), text_in(here[1] ? 1 : 0, position)});
        }
        if (std::string text = compressed(texts); text != old)
            replace_value(at.edits, each->span, std::move(text));
    }
}

void add(Opened& at, const Field& field, const std::string& value) {
    const auto& [model, subject, edits] = at;
    if (subject.own)
        return add_member(at.edits, *subject.own, field.name, value);
    const std::string look = "{ " + std::string(field.name) + " = " + value + " }";
    if (const Node* const there = subject.home->find(subject.look)) // highlight = false
        at.edits.replace(there->span, look);
    else
        add_member(at.edits, *subject.home, subject.look, look);
}

/// No table of the subject says the field: the record gets it, with what others keep of their styles' value.
void add_varying(Opened& at, const Field& field, const LanguageSet& in, const std::set<int>& positions,
                 const NextText& next) {
    Matrix texts(static_cast<std::size_t>(count_of(at.subject)));
    for (std::size_t position = 0; position < texts.size(); ++position)
        for (std::size_t i = 0; i < languages.size(); ++i)
            texts[position][i] = raw_text(at.model, at.subject, field, i, static_cast<int>(position));
    const bool alike = std::ranges::all_of(texts, [&](const auto& row) { return row == texts.front(); });
    for (int position = 0; auto& row : texts) {
        const bool taken = positions.contains(position) || (field.form == FieldForm::number && alike);
        for (std::size_t i = 0; taken && i < languages.size(); ++i)
            if (in[i])
                row[i] = next(nullptr, i, position);
        ++position;
    }
    add(at, field, compressed(texts));
}

const Node* own_value(const Subject& subject, const Field& field) {
    return subject.own ? subject.own->find(field.name) : nullptr;
}

/// A value for all languages and repetitions.
void set_plain(Opened& at, const Field& field, const Wanted& wanted) {
    const Node* const own = own_value(at.subject, field);
    if (!own)
        return add(at, field, wanted.text);
    if (field.form == FieldForm::look && own->is_table() && wanted.text == "{}")
        return; // it has one
    if (own->span.end == own->span.begin)
        throw Refused(std::string(field.name) + " has lines of its own: take them away first");
    const bool same_number = wanted.number && own->is_number() && own->number == *wanted.number;
    if (at.model.text_at(own->span) != wanted.text && !same_number)
        replace_value(at.edits, own->span, wanted.text);
}

void set_varying(Opened& at, const Field& field, const LanguageSet& in, const Wanted& wanted, bool given_by_number) {
    const auto& [model, subject, edits] = at;
    const auto step = own_step(subject, field.name);
    if (!step)
        throw Refused("repeat." + std::string(field.name) + " is no plain number");
    const int here = position_of(subject);
    const auto first = wanted.number ? std::optional(*wanted.number - *step * here) : std::nullopt; // of the group
    if (first && (*first < INT32_MIN || *first > INT32_MAX))
        throw Refused("the group's first record would not fit in 32 bits");
    const std::string text = first && first != wanted.number ? std::to_string(*first) : wanted.text;
    // A value that says the same already, in whatever spelling, stays; digits stay digits.
    const auto is_there = [&, &model = model](const Node& part) {
        if (first && text.front() == '"' && part.is_text())
            return model.text_at(part.span) == text || (given_by_number && model.number(part, field.meaning) == first);
        if (first)
            return model.number(part, field.meaning) == first;
        return part.is_text() && quoted_text(part.text) == text;
    };
    const NextText next = [&, &model = model](const Node* part, std::size_t, int) {
        if (part && is_there(*part))
            return std::string(model.text_at(part->span));
        return part && first && given_by_number && part->is_number() ? std::to_string(*first) : text;
    };
    const Node* const own = own_value(subject, field);
    if (!own)
        return add_varying(at, field, in, {here}, next);
    change(at, field, *own, in, {here}, next);
    for (std::size_t i = 0; i < in.size(); ++i) {
        if (!in[i] || part_at(*own, i, here, count_of(subject)))
            continue;
        if (!own->is_table())
            throw Refused(std::string(field.name) + " has no value for the language " + std::string(languages[i].code) +
                          ": write one first");
        add_member(at.edits, *own, languages[i].code, text);
    }
}

Refused unknown_field(std::string_view field) {
    return Refused("there is no field \"" + std::string(field) + "\"");
}

/// "repeat.count": the member of the table that is meant.
std::optional<std::string_view> repeat_entry(std::string_view field) {
    constexpr std::string_view beginning = "repeat.";
    return field.starts_with(beginning) ? std::optional(field.substr(beginning.size())) : std::nullopt;
}

void set_repeat(Opened& at, std::string_view entry, const Value& value) {
    auto& [model, subject, edits] = at;
    if (!subject.record || !subject.look.empty())
        throw Refused("only records repeat");
    if (entry != "count" && entry != "step" && !find_number_field(entry))
        throw unknown_field("repeat." + std::string(entry));
    const std::string text = wanted_value(model, {entry, FieldForm::plain}, value).text;
    const Node* const repeat = subject.own->table("repeat");
    if (!repeat)
        return add_member(edits, *subject.own, "repeat",
                          (entry == "count" ? "{ count = " : "{ count = 1, " + std::string(entry) + " = ") + text +
                              " }");
    const Node* const there = repeat->find(entry);
    if (!there)
        return add_member(edits, *repeat, entry, text);
    if (there->span.end == there->span.begin)
        throw Refused("repeat." + std::string(entry) + " is no plain number");
    if (!there->is_number() || std::to_string(there->number) != text)
        edits.replace(there->span, text);
}

/// Refuses a field that records know, but not the subject.
void expect_field_of(const Subject& subject, const Field& field) {
    const bool toggle = subject.record && subject.record->kind == Address::Of::toggle;
    if (field.name == "index" && subject.look != "pressed")
        throw Refused("a record gets another number by renumbering it");
    if (field.name == "copy" && !toggle)
        throw Refused("only a toggle record is made as a copy");
    if ((field.form == FieldForm::look || field.form == FieldForm::styles) && !subject.look.empty())
        throw Refused("a look has no " + std::string(field.name));
    if (field.form == FieldForm::look && toggle)
        throw Refused("a toggle record has no looks");
}

void set_field(Opened& at, std::string_view field, std::optional<std::size_t> language, const Value& value) {
    if (const auto entry = repeat_entry(field))
        return set_repeat(at, *entry, value);
    const Field* const info = find_field(field);
    if (!info)
        throw unknown_field(field);
    expect_field_of(at.subject, *info);
    if (language && !varies(*info))
        throw Refused(std::string(field) + " is the same in every language");
    const Wanted wanted = wanted_value(at.model, *info, value);
    if (!varies(*info))
        return set_plain(at, *info, wanted);
    LanguageSet in;
    in.fill(!language);
    if (language)
        in[*language] = true;
    set_varying(at, *info, in, wanted, std::holds_alternative<std::int64_t>(value));
}

void unset_field(Opened& at, std::string_view field, std::optional<std::size_t> language) {
    auto& [model, subject, edits] = at;
    const auto entry = repeat_entry(field);
    const Field* const info = find_field(field);
    if (!entry && !info && field != "repeat")
        throw unknown_field(field);
    const Node* const table = entry && subject.own ? subject.own->table("repeat") : subject.own;
    const Member* const found = table ? table->member(entry ? *entry : field) : nullptr;
    if (!found)
        throw Refused(std::string(field) + " is not written there");
    if (info && field == "index" && subject.look != "pressed")
        throw Refused("every record says where it stands");
    if (!language)
        return remove_member(edits, *found);
    // The value of the other language is then everybody's.
    const Node& value = found->value;
    const std::string_view code = languages[*language].code;
    const auto part = [&](std::size_t which) {
        return value.is_table() ? part_of(value, languages[which].code, 0, 1, "", tell_nobody) : nullptr;
    };
    const Node* const kept = part(1 - *language);
    if (!kept || kept == &value || !part(*language))
        throw Refused(std::string(field) + " has no value of its own for the language " + std::string(code));
    if (value.form == Node::Form::braces)
        return replace_value(edits, value.span, std::string(model.text_at(kept->span)));
    if (value.form != Node::Form::dotted)
        throw Refused(std::string(field) + " has lines of its own: take them away first");
    for (const Member& member : value.members)
        if (member.key == code)
            remove_member(edits, member);
        else
            edits.replace(member.key_span, table->prefix + std::string(field));
}

} // namespace

bool varies(const Field& field) {
    return field.form == FieldForm::number || field.form == FieldForm::text || field.form == FieldForm::word;
}

std::string change_field(const std::string& text, const Address& address, const Operation& operation) {
    Opened at(text, address);
    if (operation.what == Operation::Do::set)
        set_field(at, operation.field, operation.language, operation.value);
    else
        unset_field(at, operation.field, operation.language);
    return at.edits.result();
}

void shift_field(Opened& at, std::string_view field, const LanguageSet& in, const std::set<int>& positions,
                 std::int64_t distance) {
    const Field& info = *find_number_field(field);
    const NextText next = [&](const Node* part, std::size_t language, int position) {
        const auto number = part ? at.model.number(*part, info.meaning)
                                 : number_without_step(at.model, at.subject, info, language, position);
        if (!number)
            throw Refused(std::string(field) + " is no number");
        return std::to_string(*number + distance);
    };
    if (const Node* const own = own_value(at.subject, info))
        return change(at, info, *own, in, positions, next);
    std::set<int> all;
    for (int position = 0; position < count_of(at.subject); ++position)
        all.insert(position);
    add_varying(at, info, in, all, next);
}

std::optional<std::int64_t> present_number(const SourceModel& model, const Subject& subject, std::string_view field,
                                           std::size_t language, std::optional<int> position) {
    const int at = position.value_or(position_of(subject));
    const auto step = own_step(subject, field);
    const auto number = number_without_step(model, subject, *find_field(field), language, at);
    return number && step ? std::optional(*number + *step * at) : std::nullopt;
}

std::string present_text(const SourceModel& model, const Subject& subject, std::string_view field,
                         std::size_t language) {
    const Node* const leaf = present_leaf(subject, field, language, position_of(subject));
    if (!leaf && !subject.base.empty())
        return present_text(model, subject.base.front(), field, language);
    return leaf ? leaf->text : "";
}

std::string value_at(const SourceModel& model, const Subject& subject, const Field& field, int position,
                     std::int64_t add) {
    std::array<std::string, languages.size()> values;
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const auto number = add == 0 ? std::nullopt : number_without_step(model, subject, field, i, position);
        values[i] = number ? std::to_string(*number + add) : raw_text(model, subject, field, i, position);
    }
    return by_language(values);
}

} // namespace vcc::kit::edit
