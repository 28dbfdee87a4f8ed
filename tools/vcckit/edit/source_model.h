// A source in the terms of screens: records, styles, looks, and which table says a field.
#pragma once

#include "vcckit/edit/operation.h"
#include "vcckit/edit/text_edits.h"
#include "vcckit/source/source_layers.h"

#include "core/installation.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit::edit {

/// What a table of records stands for, and one of its records.
struct RecordTable {
    const Node* table = nullptr;
    Address::Of kind = Address::Of::slot;
    int first = 0, count = 1, step = 1; ///< index of the first record, records, distance of their indices
    int position = 0;                   ///< of the record that is meant, from 0

    int index_of(int at) const { return first + at * step; }
    int index() const { return index_of(position); }
};

/// Languages are numbered as in vcc::languages.
using LanguageSet = std::array<bool, languages.size()>;

/// What an address means in a source.
struct Subject {
    std::optional<RecordTable> record; ///< none: a style
    const Node* home = nullptr;        ///< the table of the record or style
    std::string look;                  ///< "", "highlight", "pressed"
    const Node* own = nullptr;         ///< the table that takes the fields; null: the look is not written there
    Layers layers;                     ///< the weakest first; the last one is `own`, when it is there
    std::vector<Subject> base;         ///< at most one: what the record is a copy of, for fields that no layer says
};

/// The source must outlive the model.
class SourceModel {
public:
    /// Refuses what is no TOML.
    explicit SourceModel(const std::string& source);

    const std::string& source() const { return *source_; }
    const Node& root() const { return *root_; }

    /// The names that the source gives to numbers.
    const SourceNames& names() const { return names_; }

    /// All tables of records of a kind, in the order of the text; those without a usable index are left out.
    std::vector<RecordTable> tables(Address::Of kind) const;
    std::optional<RecordTable> find(Address::Of kind, int index) const;

    /// A table and the styles that it builds on, the weakest first.
    Layers layers_of(const Node& table, const std::string& style = {}) const;
    Subject subject(const Address& address) const; ///< refuses an address of nothing
    Subject record_subject(const RecordTable& record, const std::string& look) const;

    /// The number that a value stands for, names included.
    std::optional<std::int64_t> number(const Node& value, Meaning meaning) const;
    std::optional<std::int64_t> number_of(Meaning meaning, const std::string& name) const;
    /// As a source writes a number: by a name of its own, a built-in one, or in digits.
    std::string written(std::int64_t number, Meaning meaning) const;
    std::string_view text_at(const Span& span) const;

private:
    Subject subject_of(const Node& home, const std::string& style, const std::string& look) const;

    const std::string* source_;
    std::shared_ptr<const Node> root_;
    SourceNames names_;
};

/// What an address means in a source, and changes of it on their way. The source must outlive it.
struct Opened {
    Opened(const std::string& source, const Address& address)
        : model(source), subject(model.subject(address)), edits(source) {}

    SourceModel model;
    Subject subject;
    TextEdits edits;
};

/// "slot 3", "toggle record 3", "style button", "window 3"
std::string name_of(const Address& address);

/// "slot", "toggle": what such records are called in a source, and windows and buffers by pages.
const char* key_of(Address::Of kind);

/// Refuses what has a file to itself.
void expect_in_screen(Address::Of kind);

/// The part of a value that is written for a language and a repetition; null without one for the language. Refuses a
/// list of another length than the group.
const Node* part_at(const Node& value, std::size_t language, int position, int count);

/// The screen's name, which a source may say itself.
std::string screen_name(const Node& root, const std::string& otherwise);

/// What the group adds to a field for each repetition; 0 for none. Nothing when that is no plain number.
std::optional<std::int64_t> step_of(const RecordTable& record, std::string_view field);

} // namespace vcc::kit::edit
