// What changes on disk, and what an earlier session left: merged with the working texts.
#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/text_edits.h"
#include "vcckit/edit/workspace.h"

#include "core/files.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <utility>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

void Workspace::take(Document& document, std::string disk) {
    std::erase_if(document.conflicts, [](const MergeConflict& each) { return each.removed; });
    bring_in(document, document.disk, disk, "Change on disk");
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
    for (Document& document : documents_) {
        before.insert(document.name);
        if (follow(document))
            changed.insert(document.name);
    }
    std::erase_if(documents_, [&](const Document& document) {
        const bool is_lost = document.made && document.text == document.disk && !made_text(document);
        if (is_lost) {
            newest_ = std::max(newest_, document.revision + 1);
            changed.insert(document.name);
        }
        return is_lost;
    });
    add_documents(); // what cannot be read is not there yet
    for (Document& document : documents_)
        if (!before.contains(document.name)) {
            document.packed_files_old = !document.made && !made_files(document).empty();
            changed.insert(document.name);
        }
    if (!changed.empty())
        keep();
    return {changed.begin(), changed.end()};
}

Result<DocumentState> Workspace::resolve(const std::string& name, std::size_t conflict, Choice choice) {
    const auto there = found(name);
    if (!there)
        return Failure{there.reason()};
    Document* const document = *there;
    if (conflict >= document->conflicts.size())
        return Failure{name + " has no such conflict"};
    MergeConflict chosen = document->conflicts[conflict];
    if (chosen.removed && choice == Choice::theirs) {
        document->text = document->disk;
        document->made = true;
        document->conflicts.clear();
        ++document->revision;
        take_disk_changes(); // it goes, or is made from what is installed
        keep();
        const auto left = this->document(name);
        DocumentState gone;
        gone.name = name;
        gone.gone = true;
        return left ? left : Result<DocumentState>(gone);
    }
    const std::size_t size = chosen.mine.end - chosen.mine.begin;
    std::string text = document->text;
    if (choice == Choice::theirs) {
        text.replace(chosen.mine.begin, size, chosen.theirs);
    } else if (choice == Choice::both && !chosen.removed) {
        const bool unended = size > 0 && text[chosen.mine.end - 1] != '\n';
        text.insert(chosen.mine.end, (unended ? std::string(line_end_of(text)) : "") + chosen.theirs);
        const auto& fault = row_of(document->kind).fault;
        if (fault(document->text).empty() && !fault(text).empty())
            return Failure{"both together are no source: choose one of them, and write the other where it belongs"};
    }
    document->conflicts.erase(document->conflicts.begin() + static_cast<std::ptrdiff_t>(conflict));
    change(*document, std::move(text), "Decide between here and the file", "", std::move(chosen));
    keep();
    return state_of(*document);
}

namespace {

std::int64_t time_of(const std::string& file) {
    std::error_code error;
    const auto time = fs::last_write_time(file, error);
    if (error)
        return 0;
    const auto since = std::chrono::file_clock::to_sys(time).time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(since).count();
}

} // namespace

/// What a save that was broken off has left beside the files goes, but not what another program has written.
void Workspace::clear_up(Document& document, const UnsavedDocument& left) {
    document.packed_files_old = document.packed_files_old || left.saving;
    const auto other = read_file(document.file + ".new", document_limit);
    if (other && left.saving && left.text != left.disk) { // else it has come in
        const std::string text = text_of_bytes(*other, document.kind);
        if (!text.empty() && text != left.disk && !left.text.starts_with(text))
            bring_in(document, left.disk, text, "Change on disk");
    }
    std::error_code ignored;
    fs::remove(document.file + ".new", ignored);
    for (const std::string& file : made_files(document))
        fs::remove(file + ".new", ignored);
}

void Workspace::read_offer() {
    const auto bytes = unsaved_.empty() ? Result<std::string>(Failure{""}) : read_file(unsaved_, std::size_t{1} << 30U);
    offered_when_ = time_of(unsaved_);
    for (auto& [name, left] : bytes ? work_of_text(*bytes) : UnsavedWork()) {
        Document* const document = find(name);
        if (document)
            clear_up(*document, left);
        if (left.text != (document ? document->disk : left.disk) || !left.conflicts.empty())
            offered_[name] = std::move(left);
    }
    keep(); // with an offer the file stays as it is
}

Recovery Workspace::recovered() const {
    Recovery recovery;
    for (const auto& [name, left] : offered_)
        recovery.documents.push_back(name);
    recovery.when = recovery.documents.empty() ? 0 : offered_when_;
    return recovery;
}

Result<std::vector<DocumentState>> Workspace::recover(bool take) {
    if (offered_.empty())
        return Failure{"nothing was left to recover"};
    UnsavedWork offered = std::move(offered_);
    offered_.clear();
    for (auto& [name, left] : take ? offered : UnsavedWork()) {
        Document* document = find(name);
        if (!document) { // its file is gone
            document = &documents_.emplace_back();
            document->name = name;
            document->file = left.file;
            document->kind = kind_of_file(left.file);
            document->disk = left.disk;
        }
        // As it was then; what the file holds now comes in as a change on disk.
        std::string disk = std::exchange(document->disk, std::move(left.disk));
        document->text = std::move(left.text);
        document->history = std::move(left.history);
        document->conflicts = std::move(left.conflicts);
        this->take(*document, std::move(disk));
        std::ranges::sort(documents_, {}, &Document::name);
    }
    keep();
    return documents();
}

} // namespace vcc::kit::edit
