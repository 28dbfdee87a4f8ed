// What a workspace is made of; for its own sources only.
#pragma once

#include "edit/history.h"
#include "edit/source_edit.h"
#include "edit/workspace.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vcc::kit::edit {

struct Document {
    std::string name, file; ///< the file is read and written under this path
    DocumentKind kind = DocumentKind::screen;
    std::string text, disk;          ///< the working text; what the file held when it was last read or written
    bool on_disk = false;            ///< there is such a file
    bool packed_files_old = false;   ///< they may describe an earlier text
    std::vector<std::string> copies; ///< further files with the same bytes
    std::int64_t revision = 1;
    History history;

    bool dirty() const { return text != disk || !on_disk || packed_files_old; }
};

struct Workspace::Parts {
    std::string folder, screens;
    std::vector<Document> documents; ///< by name

    Document* find(const std::string& name);

    /// Gives a document another text.
    void change(Document& document, std::string text, const std::string& label, const std::string& merge_key);
};

DocumentState state_of(const Document& document);
EditRules rules_of(const Document& document);

/// Bytes of a file as the document's text, and back: text windows are in Latin-1. Nothing for a text with other
/// characters.
std::string text_of_bytes(const std::string& bytes, DocumentKind kind);
std::optional<std::string> bytes_of_text(const std::string& text, DocumentKind kind);

/// The documents of an installation.
Result<std::vector<Document>> find_documents(const std::string& folder, const std::string& screens);

} // namespace vcc::kit::edit
