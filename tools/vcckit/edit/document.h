// A document that is open: its working text, its history, and what its file held.
#pragma once

#include "vcckit/edit/history.h"
#include "vcckit/edit/merge.h"
#include "vcckit/edit/operation.h"

#include <optional>
#include <string>
#include <vector>

namespace vcc::kit::edit {

struct Document {
    std::string name, file; ///< the file is read and written under this path
    DocumentKind kind = DocumentKind::screen;
    std::string text;                ///< the working text
    std::string disk;                ///< what the file held when it was last read or written
    bool on_disk = false;            ///< there is such a file
    bool made = false;               ///< from installed files; there is a source once something is changed
    bool packed_files_old = false;   ///< they may describe an earlier text
    std::vector<std::string> copies; ///< further files with the same bytes
    std::int64_t revision = 1;
    History history;
    std::vector<MergeConflict> conflicts; ///< in the working text

    bool dirty() const { return text != disk || (!on_disk && !made) || packed_files_old; }
};

/// The screen that a source makes.
std::string screen_of(const Document& document);

/// Bytes of a file as the document's text, and back: text windows are in Latin-1. Nothing for a text with other
/// characters.
std::string text_of_bytes(const std::string& bytes, DocumentKind kind);
std::optional<std::string> bytes_of_text(const std::string& text, DocumentKind kind);

} // namespace vcc::kit::edit
