// The documents that an editor has open: their working texts in memory, history, and the way back to disk.
#pragma once

#include "vcckit/check/source_check.h"
#include "vcckit/edit/folder_lock.h"
#include "vcckit/edit/operation.h"
#include "vcckit/edit/unsaved.h"
#include "vcckit/files/new_file.h"

#include "core/result.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vcc::kit::edit {

/// A document that is open.
struct Document : UnsavedDocument {
    std::string name; ///< "vcc"
    DocumentKind kind = DocumentKind::screen;
    bool on_disk = false;              ///< there is such a file
    bool made = false;                 ///< from installed files: its source is written with the first change
    std::vector<std::string> installs; ///< files of the installation that hold the same, as the program names them
    std::int64_t revision = 1;

    /// Whether saving would write it.
    bool dirty() const { return text != disk || (!on_disk && !made) || packed_files_old; }
};

/// The screen that a source makes.
std::string screen_of(const Document& document);

enum class Choice { mine, theirs, both };

struct Saved {
    std::vector<std::string> files; ///< that were written
    Faults faults;                  ///< that forbid packing: their sources were not written
};

/// Checks a source that lies in `file`, with the installation's fonts.
using CheckSource = std::function<SourceCheck(const std::string& file, const std::string& text)>;

inline constexpr const char* stale_reason = "the document has changed since";

/// One user at a time: calls must not run at the same time. What cannot be done throws Refused and changes nothing.
/// Nothing here needs the graphics library but the check that save() is given.
class Workspace {
public:
    /// Opens an installation. Its sources lie in `screens`; when that is empty, in FOLDER/screens or else
    /// ../screens beside it; that of the buffer list in a folder "files" beside that one. A screen without a source
    /// gets one, made from its packed files, with its first change. Refused when another editor has the folder (the
    /// reason says which process).
    explicit Workspace(const std::string& folder, const std::string& screens = {});
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    const std::string& folder() const { return folder_; }          ///< of the installation
    const std::string& screens_folder() const { return screens_; } ///< of the sources; need not exist yet
    const std::string& files_folder() const { return files_; } ///< sources of what the program reads; may be missing

    /// Why unsaved changes would not outlive a crash; empty while they would.
    const std::string& trouble() const { return trouble_; }
    /// Why nothing can be read and written: a folder has been moved away. Empty while both are there.
    std::string away() const;

    const std::map<std::string, Document>& documents() const { return documents_; } ///< by name
    const Document& document(const std::string& name) const;

    /// Applies operations. The reason is stale_reason when the document has another revision, which does not matter to
    /// a whole text that says what it was made from: what has changed since is merged with it.
    const Document& edit(const EditRequest& request);
    const Document& undo(const std::string& name) { return travel(name, true); }
    const Document& redo(const std::string& name) { return travel(name, false); }

    /// Writes the dirty documents with the packed files of both languages: all of those that can be packed, or none.
    /// What others write into the sources meanwhile is merged, too, and written again.
    Saved save(const CheckSource& check);

    /// Reads what has changed on disk, and merges it with the working texts. The names of the documents that changed,
    /// came or went.
    std::vector<std::string> take_disk_changes();
    /// Null when the document is gone by that.
    const Document* resolve(const std::string& name, std::size_t conflict, Choice choice);

    /// What a session that ended without saving has left, and when (seconds since 1970). Until recover() has taken or
    /// dropped it, edits are refused.
    const UnsavedWork& offered() const { return offered_; }
    std::int64_t offered_when() const { return offered_when_; }
    void recover(bool take);

private:
    const Document& travel(const std::string& name, bool back);
    bool save_once(const CheckSource& check, Saved& saved);
    void expect_decided() const; ///< refuses while unsaved work is offered

    /// Gives a document another text, as a step of its history. Conflicts keep their places.
    void change(Document& document, std::string text, const std::string& label, const std::string& merge_key,
                std::optional<MergeConflict> resolved = {});
    /// The same for a text that the history gave.
    void show(Document& document, std::string text);

    /// Brings in a text on disk that comes from `base` as the working text does.
    void bring_in(Document& document, const std::string& base, const std::string& other);
    /// Merges what the file holds now.
    void take(Document& document, std::string disk);
    bool follow(Document& document);

    /// What a document's file holds, else the installed files that it is made from; nothing without them. Fails when
    /// they cannot be read now.
    Result<std::optional<std::string>> text_on_disk(Document& document) const;

    /// Adds the documents that are not there yet. The reason when a file cannot be read.
    std::string add_documents();
    std::string add_installed(const std::string& source, const std::vector<std::string>& names);
    std::string add_document(const std::string& file, const std::vector<std::string>& installs);
    /// A source for installed files that have none.
    std::optional<std::string> made_text(const Document& document) const;

    /// Puts a document's file in place. Whether another program has written meanwhile, and it is to be saved again.
    bool put(Document& document, NewFile& file);
    /// What a save of a document writes or removes besides its own file.
    std::vector<std::string> made_files(const Document& document) const;
    std::string installed(const std::string& name) const; ///< a file of the installation
    /// Whether a file, links followed, lies in one of the folders.
    bool holds(const std::string& file) const;

    /// Writes what is not saved to its file.
    void keep();
    /// Reads what a session before has left there.
    void read_offer();
    void clear_up(Document& document, const UnsavedDocument& left);

    std::string folder_, screens_, files_;
    std::deque<FolderLock> locks_;
    std::map<std::string, Document> documents_;
    std::string unsaved_, trouble_; ///< the file for unsaved work; why it is not written
    UnsavedWork offered_;           ///< by a session before, not decided on yet
    std::int64_t offered_when_ = 0;
    std::int64_t newest_ = 1; ///< revision that no document that went has reached
};

} // namespace vcc::kit::edit
