// Unsaved changes on disk, so that a crash loses none. A file of entries, each with a checksum; one that is torn, and
// whatever is behind it, counts as not written.
#pragma once

#include "edit/history.h"

#include "core/handles.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace vcc::kit::edit {

/// What a journal holds of a document.
struct JournalDocument {
    std::string file;
    std::string base; ///< what the file held before the changes
    std::string text;
    bool saving = false; ///< a save had begun: its packed files may be of either text
};

using JournalContents = std::map<std::string, JournalDocument>; ///< by the document's name

/// Reads entries up to the first that is not whole and sound. Pure.
JournalContents read_journal(std::string_view bytes);

/// The folder for what an editor remembers of a folder of sources; empty when the user has no place for such things.
std::string state_folder(const std::string& screens);

class Journal {
public:
    explicit Journal(std::string path) : path_(std::move(path)) {}

    const std::string& path() const { return path_; }

    /// Notes a change of a document; before the first one what it was. Entries are with the system when this returns:
    /// they outlive the process, though not a loss of power in the next seconds.
    void note(const std::string& name, const std::string& file, const std::string& before, const std::string& after);
    /// Notes that a document's files are being written.
    void note_saving(const std::string& name, const std::string& file, const std::string& text);

    /// Puts new contents in the place of all entries; without any the file goes.
    void replace(const JournalContents& contents);

    /// Why changes are not noted; empty while they are.
    const std::string& trouble() const { return trouble_; }
    std::size_t size() const { return size_; }

private:
    void append(const std::string& entries);
    std::string begin(const std::string& name, const std::string& file, const std::string& text);

    std::string path_, trouble_;
    FilePtr file_;
    std::size_t size_ = 0;
    std::map<std::string, bool> begun_; ///< documents whose base is in the file
};

} // namespace vcc::kit::edit
