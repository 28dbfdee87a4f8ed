// What a workspace is made of; for its own sources only.
#pragma once

#include "vcckit/edit/folder_lock.h"
#include "vcckit/edit/history.h"
#include "vcckit/edit/merge.h"
#include "vcckit/edit/source_edit.h"
#include "vcckit/edit/unsaved.h"
#include "vcckit/edit/workspace.h"
#include "vcckit/files/new_file.h"

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
    bool on_disk = false;            ///< there is such a file
    bool made = false;               ///< from installed files; there is a source once something is changed
    bool packed_files_old = false;   ///< they may describe an earlier text
    std::vector<std::string> copies; ///< further files with the same bytes
    std::int64_t revision = 1;
    History history;
    std::vector<MergeConflict> conflicts; ///< in the working text

    bool dirty() const { return text != disk || (!on_disk && !made) || packed_files_old; }
};

struct Workspace::Parts {
    std::string folder, screens;
    std::vector<FolderLock> locks;
    std::vector<Document> documents; ///< by name
    std::string unsaved, trouble;    ///< the file for unsaved work; why it is not written
    UnsavedWork offered;             ///< by a session before, not decided on yet
    std::int64_t offered_when = 0;
    std::int64_t newest = 1; ///< revision that no document that went has reached

    Document* find(const std::string& name);

    /// Gives a document another text, as a step of its history. Conflicts keep their places.
    void change(Document& document, std::string text, const std::string& label, const std::string& merge_key,
                std::optional<MergeConflict> resolved = {});
    /// The same for a text that the history gave.
    void show(Document& document, std::string text);

    /// Brings in another text that comes from `base` as the working text does.
    void bring_in(Document& document, const std::string& base, const std::string& other, const std::string& label,
                  const std::string& merge_key = {});
    /// Merges what the file holds now.
    void take(Document& document, std::string disk);
    bool follow(Document& document);

    /// What a document's file holds, else the installed files that it is made from; nothing without them. Fails when
    /// they cannot be read now.
    Result<std::optional<std::string>> text_on_disk(Document& document) const;

    /// Adds the documents that are not there yet. The reason when a file cannot be read.
    std::string add_documents();
    std::string add_windows();
    std::string add_document(Document document);
    /// A source for installed files that have none.
    std::optional<std::string> made_text(const Document& document) const;

    /// Puts a document's file in place. Whether another program has written meanwhile, and it is to be saved again.
    Result<bool> put(Document& document, NewFile& file);
    /// Every file that a save of a document writes or removes.
    std::vector<std::string> files_of(const Document& document) const;
    /// Whether a file, links followed, lies in one of the two folders.
    bool holds(const std::string& file) const;
    /// Why nothing can be read and written: a folder has been moved away. Empty while both are there.
    std::string why_away() const;

    /// Writes what is not saved to its file.
    void keep();
    /// Reads what a session before has left there.
    void read_offer();
    void clear_up(Document& document, const UnsavedDocument& left);
};

/// The screen that a source makes.
std::string screen_of(const Document& document);

DocumentState state_of(const Document& document);
EditRules rules_of(const Document& document);
Failure unknown_document(const std::string& name);

/// Bytes of a file as the document's text, and back: text windows are in Latin-1. Nothing for a text with other
/// characters.
std::string text_of_bytes(const std::string& bytes, DocumentKind kind);
std::optional<std::string> bytes_of_text(const std::string& text, DocumentKind kind);

} // namespace vcc::kit::edit
