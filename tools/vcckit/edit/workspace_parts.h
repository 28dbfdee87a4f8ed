// What a workspace is made of; for its own sources only.
#pragma once

#include "edit/folder_lock.h"
#include "edit/history.h"
#include "edit/journal.h"
#include "edit/merge.h"
#include "edit/source_edit.h"
#include "edit/workspace.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vcc::kit::edit {

struct Document {
    std::string name, file; ///< the file is read and written under this path
    DocumentKind kind = DocumentKind::screen;
    std::string text;                ///< the working text
    std::string disk;                ///< what the file held when it was last read or written
    std::string base;                ///< the same, but while conflicts are open what it held before them
    bool on_disk = false;            ///< there is such a file
    bool packed_files_old = false;   ///< they may describe an earlier text
    std::vector<std::string> copies; ///< further files with the same bytes
    std::int64_t revision = 1;
    History history;
    std::vector<MergeConflict> conflicts; ///< in the working text

    bool dirty() const { return text != disk || !on_disk || packed_files_old; }
};

struct Workspace::Parts {
    std::string folder, screens;
    std::vector<FolderLock> locks;
    std::vector<Document> documents; ///< by name
    Journal journal{""};
    JournalContents offered; ///< by a session before, not decided on yet
    std::int64_t offered_when = 0;

    Document* find(const std::string& name);

    /// Gives a document another text, as a step of its history and in the journal. Conflicts keep their places.
    void change(Document& document, std::string text, const std::string& label, const std::string& merge_key);
    /// The same for a text that the history gave.
    void show(Document& document, std::string text);

    /// Merges what the file holds now.
    void take(Document& document, std::string disk);

    /// Starts the journal anew with what is not saved.
    void restart_journal();

    /// Reads what the journal of a session before has.
    void read_offer();
};

DocumentState state_of(const Document& document);
EditRules rules_of(const Document& document);
Failure unknown_document(const std::string& name);

/// Bytes of a file as the document's text, and back: text windows are in Latin-1. Nothing for a text with other
/// characters.
std::string text_of_bytes(const std::string& bytes, DocumentKind kind);
std::optional<std::string> bytes_of_text(const std::string& text, DocumentKind kind);

/// The documents of an installation.
Result<std::vector<Document>> find_documents(const std::string& folder, const std::string& screens);

/// The sources of screens in a folder, by name.
std::vector<std::string> source_files(const std::string& screens);

/// A document whose file can be read; its reason begins with the file's name.
Result<Document> read_document(const std::string& file, DocumentKind kind);

} // namespace vcc::kit::edit
