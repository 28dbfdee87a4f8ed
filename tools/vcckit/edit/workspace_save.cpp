// The way of documents to disk.
#include "edit/workspace_parts.h"
#include "packed_screen.h"

#include "platform/files.h"

#include <set>

namespace vcc::kit::edit {

namespace {

/// Puts a document's files into the set. The reason of a failure; `saved` gets the faults of a source.
std::string stage(const Document& document, const std::string& folder, const CheckSource& check, FileSet& files,
                  Saved& saved, std::set<std::string>& screens) {
    const auto bytes = bytes_of_text(document.text, document.kind);
    if (!bytes)
        return document.name + " has a character outside Windows Latin-1";
    if (document.kind == DocumentKind::screen) {
        const SourceCheck checked = check(document.file, document.text);
        if (!checked.faults.empty()) {
            saved.faults.insert(saved.faults.end(), checked.faults.begin(), checked.faults.end());
            return {};
        }
        if (!screens.insert(checked.screen.name).second)
            return document.file + " makes the same screen as another source: " + checked.screen.name;
        if (std::string reason = write_packed_screen(checked.screen, folder, files, saved.files); !reason.empty())
            return reason;
    }
    std::vector<std::string> names = document.copies;
    names.insert(names.begin(), document.file);
    for (const std::string& name : names) {
        if (std::string reason = files.write(name, *bytes); !reason.empty())
            return reason;
        saved.files.push_back(name);
    }
    return {};
}

} // namespace

Result<Saved> Workspace::save(const CheckSource& check) {
    if (!parts_->offered.empty())
        return Failure{"an earlier session left unsaved changes: take them or drop them first"};
    take_disk_changes();
    for (const Document& document : parts_->documents)
        if (!document.conflicts.empty())
            return Failure{document.name + " was changed on disk in the same lines: choose which to keep"};
    Saved saved;
    FileSet files;
    std::set<std::string> screens;
    std::vector<Document*> dirty;
    for (Document& document : parts_->documents) {
        if (!document.dirty())
            continue;
        dirty.push_back(&document);
        if (std::string reason = stage(document, parts_->folder, check, files, saved, screens); !reason.empty())
            return Failure{std::move(reason)};
    }
    if (!saved.faults.empty()) {
        saved.files.clear();
        return saved;
    }
    // From here on an end of the process may leave some of the files new and some old.
    for (Document* const document : dirty) {
        parts_->journal.note_saving(document->name, document->file, document->text);
        document->packed_files_old = true;
    }
    if (std::string reason = files.commit(); !reason.empty())
        return Failure{std::move(reason)};
    for (Document* const document : dirty) {
        document->disk = document->base = document->text;
        document->on_disk = true;
        document->packed_files_old = false;
        document->history.end_row();
        ++document->revision;
    }
    parts_->restart_journal();
    return saved;
}

} // namespace vcc::kit::edit
