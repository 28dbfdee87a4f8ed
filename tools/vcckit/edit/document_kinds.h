// What kinds of documents there are, one row each, and changes of their texts that leave everything else in these as it
// is: comments, order, layout, line ends. Texts are UTF-8; `screen` says what numbers are fixed, none when it is empty.
#pragma once

#include "vcckit/edit/operation.h"
#include "vcckit/faults/fault_codes.h"
#include "vcckit/source/source_layers.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vcc::kit::edit {

/// What is written where in a text, objects as pages get them. Records and styles have their line, the styles that they
/// build on, in `written` each field's name with who says it ("slot", "toggle" or "style button"; of several the last
/// one, which counts), in `said` what places a text and is in no record. A style's `written` and `look_written` have
/// the values as the text has them. Windows and buffers have their number, line, and `values` by name; what later lines
/// say counts. What the program knows by its number has its role in `protected`.
struct Description {
    nlohmann::json slots = nlohmann::json::array(), toggles = slots, styles = slots; ///< in the order of the text
    nlohmann::json windows = slots, buffers = slots;                                 ///< likewise
    SourceNames names;                                                               ///< that it gives to numbers
};

struct KindRow {
    const char *word, *ending; ///< what pages call it; of its files' names
    bool named_whole; ///< documents have the ending in their names: a screen's file is called the same without it
    bool packed;      ///< a source that other files are packed from; otherwise the program reads the text itself
    /// The text after an operation that is not replace_text. Throws Refused.
    std::string (*change)(std::string text, const Operation& operation, const std::string& screen);
    /// Throws Refused for a text that cannot be read. Pure.
    Description (*describe)(const std::string& text, const std::string& screen);
    std::string (*fault)(const std::string& text); ///< why a text is of no use; empty when it is
    FaultCode code{};                              ///< of that, when check does not tell it of a source
    const char* advice = "";
};

const KindRow& row_of(DocumentKind kind);
DocumentKind kind_of_file(std::string_view file); ///< by the ending of its name

/// Bytes of a file as a document's text, and back: what the program reads is in Latin-1. Nothing for a text with other
/// characters.
std::string text_of_bytes(const std::string& bytes, DocumentKind kind);
std::optional<std::string> bytes_of_text(const std::string& text, DocumentKind kind);

/// The text after all operations, one after the other. Throws Refused: nothing changes then. A source that cannot be
/// read as TOML takes no operation but replace_text. Mistakes that only the screen's reader knows (a text too long, an
/// unknown name) are no reason to refuse. Pure.
std::string apply(std::string text, DocumentKind kind, std::span<const Operation> operations,
                  const std::string& screen = {});

/// "Move slot 3", "Change font": what a menu calls an edit.
std::string label_of(std::span<const Operation> operations);

// What the rows are made of: for each kind a function that changes a text, and one that describes it.

/// Sources of screens.
std::string change_screen(std::string text, const Operation& operation, const std::string& screen);
Description describe_screen(const std::string& source, const std::string& screen);

/// What change_screen() does to move or resize. Everything addressed moves once, also where several addresses are of
/// one group; languages keep their distance.
std::string move_or_resize(std::string text, const Operation& operation);

/// Text windows: lines of a key and a number. Fields are named as in window_fields.h or by their keys; values have
/// "title", too. The line is that of the first "+", 1 for window 0 without one.
std::string change_windows(std::string text, const Operation& operation, const std::string& screen);
Description describe_windows(const std::string& text, const std::string& screen);

/// The buffer list: which "picture" is in which graphic buffer. That of a new one is the operation's text.
std::string change_buffers(std::string text, const Operation& operation, const std::string& screen);
Description describe_buffers(const std::string& text, const std::string& screen);

/// "protected" of what is described.
inline nlohmann::json text_or_null(const std::string& text) {
    return text.empty() ? nlohmann::json() : nlohmann::json(text);
}

} // namespace vcc::kit::edit
