// What kinds of documents there are: one row each, which says how a text of the kind is stored, changed and described.
#pragma once

#include "vcckit/edit/describe.h"
#include "vcckit/edit/operation.h"
#include "vcckit/faults/fault_codes.h"

#include <optional>
#include <string>
#include <string_view>

namespace vcc::kit::edit {

struct KindRow {
    const char *word, *ending; ///< what pages call it; of its files' names
    bool named_whole; ///< documents have the ending in their names: a screen's file is called the same without it
    bool packed;      ///< a source that other files are packed from; otherwise the program reads the text itself
    /// The text after an operation that is not replace_text. Throws Refused. `screen` says what numbers are fixed;
    /// empty: none are.
    std::string (*change)(std::string text, const Operation& operation, const std::string& screen);
    /// Throws Refused for a text that cannot be read.
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

} // namespace vcc::kit::edit
