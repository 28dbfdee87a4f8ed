// Which documents an installation has, and their texts.
#include "vcckit/edit/workspace.h"

#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/source_model.h"
#include "vcckit/source/packed_screen.h"
#include "vcckit/source/unpack.h"

#include "core/files.h"
#include "platform/files.h"

#include <algorithm>
#include <filesystem>
#include <set>

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
    std::vector<Document> candidates(1);
    candidates.front().file = source;
    candidates.front().installs = names;
    for (const std::string& name : names) {
        candidates.emplace_back().file = installed(name);
        candidates.back().installs = {name};
    }
    for (const Document& each : candidates) {
        if (std::string reason = add_document(each); !reason.empty())
            return reason;
        if (each.file == source &&
            std::ranges::any_of(documents_, [&](const auto& one) { return one.second.file == source; }))
            break;
    }
    return {};
}

/// Adds a document when there is something to read.
std::string Workspace::add_document(Document document) {
    document.kind = kind_of_file(document.installs.empty() ? document.file : document.installs.front());
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
        Document document;
        document.file = file;
        const bool is_made_elsewhere = !fs::exists(file) && std::ranges::any_of(documents_, [&](const auto& each) {
            return screen_of(each.second) == fs::path(file).stem();
        });
        if (std::string fault = is_made_elsewhere ? "" : add_document(std::move(document)); !fault.empty())
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

} // namespace vcc::kit::edit
