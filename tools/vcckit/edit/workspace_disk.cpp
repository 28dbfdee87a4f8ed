// What changes on disk, and what an earlier session left: merged with the working texts.
#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/workspace.h"

#include "core/files.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include <sys/stat.h>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

void Workspace::take(Document& document, std::string disk) {
    std::erase_if(document.conflicts, [](const MergeConflict& each) { return each.removed; });
    bring_in(document, document.disk, disk);
    document.disk = std::move(disk);
    document.packed_files_old = !document.made && !made_files(document).empty();
}

std::string Workspace::away() const {
    for (const FolderLock& lock : locks_)
        if (!lock.is_in_place())
            return lock.folder() + " has been moved away: nothing is read and written until it is back";
    return {};
}

/// One document; whether it has changed.
bool Workspace::follow(Document& document) {
    const bool was_there = document.on_disk;
    auto text = text_on_disk(document);
    if (!text) // not now
        return false;
    if (!*text && was_there) {
        if (document.text != document.disk || !document.conflicts.empty()) {
            document.conflicts = {{{0, document.text.size()}, document.disk, "", true}};
            ++document.revision;
            return true;
        }
        document.made = true;
        *text = made_text(document); // when there is nothing to make it from, it goes
    }
    if (!*text || (**text == document.disk && document.on_disk == was_there))
        return false;
    take(document, std::move(**text));
    return true;
}

std::vector<std::string> Workspace::take_disk_changes() {
    if (!away().empty())
        return {};
    std::set<std::string> before, changed;
    for (auto& [name, document] : documents_) {
        before.insert(name);
        if (follow(document))
            changed.insert(name);
    }
    std::erase_if(documents_, [&](const auto& each) {
        const Document& document = each.second;
        const bool is_lost = document.made && document.text == document.disk && !made_text(document);
        if (is_lost) {
            newest_ = std::max(newest_, document.revision + 1);
            changed.insert(document.name);
        }
        return is_lost;
    });
    add_documents(); // what cannot be read is not there yet
    for (auto& [name, document] : documents_)
        if (!before.contains(name)) {
            document.packed_files_old = !document.made && !made_files(document).empty();
            changed.insert(name);
        }
    if (!changed.empty())
        keep();
    return {changed.begin(), changed.end()};
}

/// What a save that was broken off has left beside the files goes, but not what another program has written.
void Workspace::clear_up(Document& document, const UnsavedDocument& left) {
    document.packed_files_old = document.packed_files_old || left.packed_files_old;
    const auto other = read_file(document.file + ".new", document_limit);
    if (other && left.packed_files_old && left.text != left.disk) { // else it has come in
        const std::string text = text_of_bytes(*other, document.kind);
        if (!text.empty() && text != left.disk && !left.text.starts_with(text))
            bring_in(document, left.disk, text);
    }
    std::error_code ignored;
    fs::remove(document.file + ".new", ignored);
    for (const std::string& file : made_files(document))
        fs::remove(file + ".new", ignored);
}

void Workspace::read_offer() {
    const auto bytes = read_file(unsaved_, std::size_t{1} << 30U);
    struct stat status {};
    offered_when_ = ::stat(unsaved_.c_str(), &status) == 0 ? status.st_mtime : 0;
    for (auto& [name, left] : bytes ? work_of_text(*bytes) : UnsavedWork()) {
        const auto document = documents_.find(name);
        const bool is_there = document != documents_.end();
        if (is_there)
            clear_up(document->second, left);
        if (left.text != (is_there ? document->second.disk : left.disk) || !left.conflicts.empty())
            offered_[name] = std::move(left);
    }
    keep(); // with an offer the file stays as it is
}

void Workspace::recover(bool take) {
    if (offered_.empty())
        throw Refused("nothing was left to recover");
    UnsavedWork offered = std::move(offered_);
    offered_.clear();
    for (auto& [name, left] : take ? offered : UnsavedWork()) {
        const auto [place, is_gone] = documents_.try_emplace(name);
        Document& document = place->second;
        if (is_gone) { // its file
            document.name = name;
            document.kind = kind_of_file(left.file);
        } else {
            left.file = document.file;
        }
        // As it was then; what the file holds now comes in as a change on disk.
        std::string disk = is_gone ? left.disk : document.disk;
        static_cast<UnsavedDocument&>(document) = std::move(left);
        this->take(document, std::move(disk));
    }
    keep();
}

} // namespace vcc::kit::edit
