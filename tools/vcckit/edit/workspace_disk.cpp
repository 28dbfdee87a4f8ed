// What changes on disk, and what an earlier session left: merged with the working texts.
#include "edit/text_edits.h"
#include "edit/workspace_parts.h"

#include "core/files.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

void Workspace::Parts::take(Document& document, std::string disk) {
    Merged merged = merge(document.disk, document.text, disk);
    const bool settled = document.conflicts.empty();
    document.disk = std::move(disk);
    document.packed_files_old = document.kind == DocumentKind::screen || !document.copies.empty();
    if (merged.text != document.text)
        change(document, std::move(merged.text), "Change on disk", "");
    else
        ++document.revision;
    document.conflicts.insert(document.conflicts.end(), merged.conflicts.begin(), merged.conflicts.end());
    if (settled && document.conflicts.empty())
        document.base = document.disk;
}

std::vector<std::string> Workspace::take_disk_changes() {
    std::vector<std::string> changed;
    for (Document& document : parts_->documents) {
        std::error_code error;
        const bool is_there = fs::exists(document.file, error);
        const auto bytes = read_file(document.file, document_limit);
        if (error || (is_there && !bytes)) // not now
            continue;
        const std::string text = bytes ? text_of_bytes(*bytes, document.kind) : document.disk;
        if (is_there == document.on_disk && text == document.disk)
            continue;
        document.on_disk = is_there;
        if (text != document.disk)
            parts_->take(document, text);
        else
            ++document.revision;
        changed.push_back(document.name);
    }
    for (const std::string& file : source_files(parts_->screens)) {
        if (parts_->find(fs::path(file).stem().string()))
            continue;
        if (auto document = read_document(file, DocumentKind::screen)) {
            changed.push_back(document->name);
            document->packed_files_old = true;
            parts_->documents.push_back(std::move(*document));
        }
    }
    std::ranges::sort(parts_->documents, {}, &Document::name);
    return changed;
}

Result<DocumentState> Workspace::resolve(const std::string& name, std::size_t conflict, Choice choice) {
    Document* const document = parts_->find(name);
    if (!document)
        return unknown_document(name);
    if (conflict >= document->conflicts.size())
        return Failure{name + " has no such conflict"};
    const MergeConflict chosen = document->conflicts[conflict];
    document->conflicts.erase(document->conflicts.begin() + static_cast<std::ptrdiff_t>(conflict));
    const std::size_t size = chosen.mine.end - chosen.mine.begin;
    std::string text = document->text;
    if (choice == Choice::theirs)
        text.replace(chosen.mine.begin, size, chosen.theirs);
    else if (choice == Choice::both) {
        const bool unended = size > 0 && text[chosen.mine.end - 1] != '\n';
        text.insert(chosen.mine.end, (unended ? std::string(line_end_of(text)) : "") + chosen.theirs);
    }
    if (text != document->text)
        parts_->change(*document, std::move(text), "Change on disk", "");
    else
        ++document->revision;
    if (document->conflicts.empty()) {
        document->base = document->disk;
        parts_->restart_journal();
    }
    return state_of(*document);
}

namespace {

/// What a save that was broken off has left beside the files.
void remove_leftovers(const Document& document, const std::string& folder) {
    std::vector<std::string> files = document.copies;
    files.push_back(document.file);
    for (const LanguageRow& language : languages)
        for (const char* extension : {".slt", ".tgl"})
            files.push_back((fs::path(folder) / "tools/language" / language.folder /
                             (std::string(language.prefix) + document.name + extension))
                                .string());
    std::error_code ignored;
    for (const std::string& file : files)
        fs::remove(file + ".new", ignored);
}

std::int64_t time_of(const std::string& file) {
    std::error_code error;
    const auto time = fs::last_write_time(file, error);
    if (error)
        return 0;
    const auto since = std::chrono::file_clock::to_sys(time).time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(since).count();
}

} // namespace

void Workspace::Parts::read_offer() {
    const auto bytes =
        journal.path().empty() ? Result<std::string>(Failure{""}) : read_file(journal.path(), std::size_t{1} << 30U);
    offered_when = time_of(journal.path());
    for (auto& [name, left] : bytes ? read_journal(*bytes) : JournalContents()) {
        Document* const document = find(name);
        if (document && left.saving) {
            document->packed_files_old = true;
            remove_leftovers(*document, folder);
        }
        if (left.text != (document ? document->disk : left.base))
            if (const Merged merged = merge(left.base, left.text, document ? document->disk : left.base);
                !document || merged.text != document->disk || !merged.conflicts.empty())
                offered[name] = left;
    }
    if (offered.empty())
        restart_journal(); // until then it stays as it is
}

Recovery Workspace::recovered() const {
    Recovery recovery;
    for (const auto& [name, left] : parts_->offered)
        recovery.documents.push_back(name);
    recovery.when = recovery.documents.empty() ? 0 : parts_->offered_when;
    return recovery;
}

Result<std::vector<DocumentState>> Workspace::recover(bool take) {
    if (parts_->offered.empty())
        return Failure{"nothing was left to recover"};
    const JournalContents offered = std::move(parts_->offered);
    parts_->offered.clear();
    for (const auto& [name, left] : take ? offered : JournalContents()) {
        if (!parts_->find(name)) { // its file is gone
            Document document;
            document.name = name;
            document.file = left.file;
            document.text = document.disk = document.base = left.base;
            parts_->documents.push_back(std::move(document));
            std::ranges::sort(parts_->documents, {}, &Document::name);
        }
        Document& document = *parts_->find(name);
        Merged merged = merge(left.base, left.text, document.disk);
        document.history.note(document.text, merged.text, "Recover unsaved changes", "");
        document.text = std::move(merged.text);
        document.conflicts = std::move(merged.conflicts);
        if (!document.conflicts.empty())
            document.base = left.base;
        ++document.revision;
    }
    parts_->restart_journal();
    return documents();
}

} // namespace vcc::kit::edit
