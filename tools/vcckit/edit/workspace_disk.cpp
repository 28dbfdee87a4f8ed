// Documents on disk: which an installation has, their texts, what changes, and what an earlier session left.
#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/source_model.h"
#include "vcckit/edit/workspace.h"
#include "vcckit/source/packed_screen.h"
#include "vcckit/source/unpack.h"

#include "core/files.h"
#include "platform/files.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include <sys/stat.h>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

std::string screen_of(const Document& document) {
    const SourceTree tree = read_source_tree(document.text);
    return tree ? screen_name(*tree.root, document.name) : document.name;
}

namespace {

std::vector<std::string> source_files(const std::string& screens) {
    std::vector<std::string> files;
    std::error_code error;
    for (fs::directory_iterator entry(screens, error), end; !error && entry != end; entry.increment(error))
        if (std::error_code ignored; entry->is_regular_file(ignored) && entry->path().extension() == ".toml")
            files.push_back(entry->path().string());
    std::ranges::sort(files);
    return files;
}

bool is_below(const fs::path& file, const fs::path& folder) {
    return std::ranges::mismatch(folder, file).in1 == folder.end();
}

} // namespace

bool Workspace::holds(const std::string& file) const {
    std::error_code error;
    const fs::path real = fs::weakly_canonical(file, error);
    return !error && (is_below(real, folder_) || is_below(real, screens_) || is_below(real, files_));
}

Result<std::optional<std::string>> Workspace::text_on_disk(Document& document) const {
    std::error_code error;
    document.on_disk = fs::exists(document.file, error);
    if (!document.on_disk && !error)
        return document.made ? made_text(document) : std::nullopt;
    auto bytes = error ? Result<std::string>(Failure{error.message()}) : read_file(document.file, document_limit);
    if (!bytes)
        return Failure{document.file + " " + bytes.reason()};
    document.made = false;
    return std::optional(text_of_bytes(*bytes, document.kind));
}

std::optional<std::string> Workspace::made_text(const Document& document) const {
    if (!row_of(document.kind).packed) { // one for all languages, when they say the same
        std::set<std::string> all;
        for (const std::string& name : document.installs)
            all.insert(read_file(installed(name), document_limit).value_or(""));
        return all.size() == 1 && !all.begin()->empty() ? std::optional(text_of_bytes(*all.begin(), document.kind))
                                                        : std::nullopt;
    }
    const auto packed = read_packed_screen(folder_, document.name);
    if (!packed || !difference_of_structure(*packed).empty())
        return std::nullopt; // check tells what is wrong with it
    return write_screen_source(*packed);
}

std::string Workspace::installed(const std::string& name) const {
    return platform::resolve_path((fs::path(folder_) / name).string());
}

/// A file among the sources serves all of the installed ones; else each of those is a document.
std::string Workspace::add_installed(const std::string& source, const std::vector<std::string>& names) {
    std::string reason = add_document(source, names);
    if (std::ranges::any_of(documents_, [&](const auto& each) { return each.second.file == source; }))
        return reason;
    for (auto name = names.begin(); reason.empty() && name != names.end(); ++name)
        reason = add_document(installed(*name), {*name});
    return reason;
}

/// Adds a document when there is something to read.
std::string Workspace::add_document(const std::string& file, const std::vector<std::string>& installs) {
    Document document;
    document.file = file;
    document.installs = installs;
    document.kind = kind_of_file(installs.empty() ? file : installs.front());
    const fs::path name = fs::path(document.file).filename();
    document.name = row_of(document.kind).named_whole ? name.string() : name.stem().string();
    if (documents_.contains(document.name) || !holds(document.file))
        return {};
    document.made = true; // unless there is such a file
    auto text = text_on_disk(document);
    if (!text)
        return text.reason();
    if (*text) {
        document.text = document.disk = std::move(**text);
        document.revision = newest_;
        documents_.emplace(document.name, std::move(document));
    }
    return {};
}

std::string Workspace::add_documents() {
    std::string reason;
    std::vector<std::string> files = source_files(screens_);
    for (const ScreenFile& row : screen_files)
        files.push_back((fs::path(screens_) / (std::string(row.name) + ".toml")).string());
    for (const std::string& file : files) {
        const bool is_made_elsewhere = !fs::exists(file) && std::ranges::any_of(documents_, [&](const auto& each) {
            return screen_of(each.second) == fs::path(file).stem();
        });
        if (std::string fault = is_made_elsewhere ? "" : add_document(file, {}); !fault.empty())
            reason = std::move(fault);
    }
    std::vector<std::string> windows;
    windows.reserve(std::size(languages));
    for (const LanguageRow& language : languages)
        windows.push_back(language_file_name(language, path::text_windows));
    const std::string list = fs::is_directory(files_) ? (fs::path(files_) / path::buffer_list).string() : "";
    for (std::string fault : {add_installed((fs::path(screens_) / path::text_windows).string(), windows),
                              add_installed(list, {path::buffer_list})})
        if (!fault.empty())
            reason = std::move(fault);
    return reason;
}

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
