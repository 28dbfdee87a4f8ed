// The way of documents to disk.
#include "edit/workspace_parts.h"
#include "packed_screen.h"

#include <map>

namespace vcc::kit::edit {

namespace {

/// A document on its way to disk.
struct Leaving {
    Document* document = nullptr;
    std::string bytes; ///< of its file
    Screen screen;     ///< of a source
};

/// Whether two sources make the same screen; the reason then.
std::string fault_of_screens(const std::vector<Leaving>& leaving) {
    std::map<std::string, std::string> files;
    for (const Leaving& each : leaving)
        if (each.document->kind == DocumentKind::screen)
            if (const auto [other, added] = files.emplace(each.screen.name, each.document->file); !added)
                return each.document->file + " makes the same screen as " + other->second;
    return {};
}

/// Puts the files of a document into the set, their names to `written`. The reason of a failure.
std::string stage(const Leaving& leaving, const std::string& folder, FileSet& files,
                  std::vector<std::string>& written) {
    const Document& document = *leaving.document;
    if (document.kind == DocumentKind::screen)
        if (std::string reason = write_packed_screen(leaving.screen, folder, files, written); !reason.empty())
            return reason;
    std::vector<std::string> names = document.copies;
    names.insert(names.begin(), document.file);
    for (const std::string& name : names) {
        if (std::string reason = files.write(name, leaving.bytes); !reason.empty())
            return reason;
        written.push_back(name);
    }
    return {};
}

} // namespace

Result<Saved> Workspace::save(const CheckSource& check) {
    if (!parts_->offered.empty())
        return Failure{undecided_reason};
    take_disk_changes();
    Saved saved;
    std::vector<Leaving> leaving;
    for (Document& document : parts_->documents) {
        if (!document.conflicts.empty())
            return Failure{document.name + " was changed on disk in the same lines: choose which to keep"};
        if (!document.dirty())
            continue;
        auto bytes = bytes_of_text(document.text, document.kind);
        if (!bytes)
            return Failure{document.name + " has a character outside Windows Latin-1"};
        SourceCheck checked;
        if (document.kind == DocumentKind::screen)
            checked = check(document.file, document.text);
        saved.faults.insert(saved.faults.end(), checked.faults.begin(), checked.faults.end());
        leaving.push_back({&document, std::move(*bytes), std::move(checked.screen)});
    }
    if (!saved.faults.empty())
        return saved;
    if (std::string reason = fault_of_screens(leaving); !reason.empty())
        return Failure{std::move(reason)};

    // From here on an end of the process may leave some of the files new and some old.
    for (const Leaving& each : leaving) {
        parts_->journal.note_saving(each.document->name, each.document->file, each.document->text);
        each.document->packed_files_old = true;
    }
    FileSet files;
    std::string reason;
    for (const Leaving& each : leaving)
        if (reason.empty())
            reason = stage(each, parts_->folder, files, saved.files);
    if (reason.empty())
        reason = files.commit();
    if (!reason.empty())
        return Failure{std::move(reason)};
    for (const Leaving& each : leaving) {
        Document& document = *each.document;
        document.disk = document.base = document.text;
        document.on_disk = true;
        document.packed_files_old = false;
        document.history.end_row();
        ++document.revision;
    }
    parts_->restart_journal();
    return saved;
}

} // namespace vcc::kit::edit
