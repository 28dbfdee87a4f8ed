#include "vcckit/edit/source_edit.h"

#include "vcckit/edit/field_edit.h"
#include "vcckit/edit/place_edit.h"
#include "vcckit/edit/record_edit.h"
#include "vcckit/edit/source_model.h"
#include "vcckit/edit/text_edits.h"
#include "vcckit/edit/window_edit.h"

#include <algorithm>
#include <set>

namespace vcc::kit::edit {

namespace {

using Do = Operation::Do;

/// Texts read again for every part of every operation: bytes times parts.
constexpr std::size_t work_limit = 512u << 20;

Result<std::optional<std::size_t>> language_of(const std::string& code) {
    if (code.empty())
        return std::optional<std::size_t>();
    for (std::size_t i = 0; i < languages.size(); ++i)
        if (languages[i].code == code)
            return std::optional(i);
    return Failure{"\"" + code + "\" is no language: there are en and de"};
}

/// One part of an operation: what it does to the records at one address. The reason when it cannot.
using Step = std::string (*)(TextEdits& edits, const SourceModel& model, const Subject& subject,
                             const Operation& operation, std::optional<std::size_t> language);

std::string set_step(TextEdits& edits, const SourceModel& model, const Subject& subject, const Operation& operation,
                     std::optional<std::size_t> language) {
    return set_field(edits, model, subject, operation.field, language, operation.value);
}

std::string unset_step(TextEdits& edits, const SourceModel& model, const Subject& subject, const Operation& operation,
                       std::optional<std::size_t> language) {
    return unset_field(edits, model, subject, operation.field, language);
}

/// Runs a step for each address in turn, each on what the one before has left.
Result<std::string> run_steps(std::string text, const Operation& operation, Step step) {
    const auto language = language_of(operation.language);
    if (!language)
        return Failure{language.reason()};
    for (const Address& address : operation.of) {
        const auto model = SourceModel::read(text);
        if (!model)
            return Failure{model.reason()};
        const auto subject = model->subject(address);
        if (!subject)
            return Failure{subject.reason()};
        TextEdits edits(text);
        if (std::string reason = step(edits, *model, *subject, operation, *language); !reason.empty())
            return Failure{std::move(reason)};
        if (!edits.empty())
            text = edits.result();
    }
    return text;
}

Result<std::string> run_screen(std::string text, const Operation& operation, const EditRules& rules) {
    switch (operation.what) {
    case Do::set:
        return run_steps(std::move(text), operation, set_step);
    case Do::unset:
        return run_steps(std::move(text), operation, unset_step);
    case Do::move:
    case Do::resize:
        return move_or_resize(std::move(text), operation);
    case Do::create:
        return create_record(text, operation);
    case Do::copy:
        return copy_record(text, operation);
    case Do::remove:
        return remove_records(std::move(text), operation, rules);
    case Do::renumber:
        return renumber_record(text, operation, rules);
    case Do::split:
        return split_groups(std::move(text), operation);
    case Do::replace_text:
        break; // before it comes here
    }
    return text;
}

std::string why_not_text(const std::string& text) {
    return text.size() > document_limit ? "the text would be longer than " + std::to_string(document_limit) + " bytes"
                                        : "";
}

} // namespace

Result<std::string> apply(const std::string& source, DocumentKind kind, std::span<const Operation> operations,
                          const EditRules& rules) {
    std::size_t parts = 0;
    for (const Operation& operation : operations)
        parts += std::max<std::size_t>(1, operation.of.size());
    if (parts > operation_limit)
        return Failure{"more than " + std::to_string(operation_limit) + " operations at once"};
    if (parts * source.size() > work_limit)
        return Failure{"too many operations at once for a source of this size"};
    std::string text = source;
    for (const Operation& operation : operations) {
        if (operation.what == Do::replace_text) {
            text = operation.text;
        } else {
            auto next =
                kind == DocumentKind::screen ? run_screen(text, operation, rules) : apply_to_windows(text, operation);
            if (!next)
                return next;
            if (kind == DocumentKind::screen && *next != text)
                if (const auto tree = read_source_tree(*next); !tree)
                    return Failure{"the change does not fit into the source as it is written: " + tree.reason()};
            text = std::move(*next);
        }
        if (std::string reason = why_not_text(text); !reason.empty())
            return Failure{std::move(reason)};
    }
    return text;
}

namespace {

std::string name_of(const Address& address) {
    const std::string number = std::to_string(address.index);
    switch (address.of) {
    case Address::Of::slot:
        return "slot " + number;
    case Address::Of::toggle:
        return "toggle record " + number;
    case Address::Of::style:
        return "style " + address.style;
    case Address::Of::window:
        return "window " + number;
    }
    return {};
}

constexpr const char* verb_of(Do what) {
    switch (what) {
    case Do::set:
        return "Set";
    case Do::unset:
        return "Unset";
    case Do::move:
        return "Move";
    case Do::resize:
        return "Resize";
    case Do::create:
        return "New";
    case Do::copy:
        return "Copy";
    case Do::remove:
        return "Delete";
    case Do::renumber:
        return "Renumber";
    case Do::split:
        return "Write out";
    case Do::replace_text:
        return "Change text";
    }
    return "Change";
}

} // namespace

std::string label_of(std::span<const Operation> operations) {
    if (operations.empty())
        return "Change nothing";
    const Operation& first = operations.front();
    std::string label = verb_of(first.what);
    if (!first.field.empty())
        label += " " + first.field + " of";
    if (first.what == Do::create && first.of.empty())
        label += " slot " + std::to_string(first.to);
    else if (!first.of.empty())
        label += " " + (first.of.size() > 1 ? std::to_string(first.of.size()) + " records" : name_of(first.of.front()));
    return label;
}

} // namespace vcc::kit::edit
