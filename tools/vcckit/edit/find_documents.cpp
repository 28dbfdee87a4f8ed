// Which documents an installation has, and their texts.
#include "edit/workspace_parts.h"

#include "latin1.h"
#include "packed_screen.h"
#include "unpack.h"

#include "core/files.h"
#include "platform/files.h"
#include "platform/latin1.h"

#include <algorithm>
#include <filesystem>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

std::string text_of_bytes(const std::string& bytes, DocumentKind kind) {
    return kind == DocumentKind::windows ? platform::utf8_from_latin1(bytes) : bytes;
}

std::optional<std::string> bytes_of_text(const std::string& text, DocumentKind kind) {
    return kind == DocumentKind::windows ? to_latin1(text) : text;
}

Result<Document> read_document(const std::string& file, DocumentKind kind) {
    const auto bytes = read_file(file, document_limit);
    if (!bytes)
        return Failure{file + " " + bytes.reason()};
    Document document;
    document.name = fs::path(file).stem().string();
    document.file = file;
    document.kind = kind;
    document.text = document.disk = document.base = text_of_bytes(*bytes, kind);
    document.on_disk = true;
    return document;
}

std::vector<std::string> source_files(const std::string& screens) {
    std::vector<std::string> files;
    std::error_code error;
    for (fs::directory_iterator entry(screens, error), end; !error && entry != end; entry.increment(error))
        if (entry->is_regular_file(error) && entry->path().extension() == ".toml")
            files.push_back(entry->path().string());
    std::ranges::sort(files);
    return files;
}

namespace {

/// Sources for an installation that has none, from its packed files.
Result<std::vector<Document>> make_sources(const fs::path& folder, const fs::path& screens) {
    std::vector<Document> documents;
    for (const ScreenFile& row : screen_files) {
        const std::string name(row.name);
        if (!platform::file_exists((folder / slot_file_name(languages[0], name)).string()))
            continue;
        const auto screen = read_packed_screen(folder.string(), name);
        if (!screen)
            return Failure{screen.reason()};
        if (std::string difference = difference_of_structure(*screen); !difference.empty())
            return Failure{std::move(difference) += " in screen " + name};
        Document document;
        document.name = name;
        document.file = (screens / (name + ".toml")).string();
        document.text = document.disk = document.base = write_screen_source(*screen);
        documents.push_back(std::move(document));
    }
    return documents;
}

/// A file of text windows among the sources serves both languages; else each language has its own.
std::string add_windows(const fs::path& folder, const fs::path& screens, std::vector<Document>& documents) {
    std::vector<std::string> installed;
    installed.reserve(languages.size());
    for (const LanguageRow& language : languages) {
        fs::path file = folder / "tools/language" / language.folder / language.prefix;
        installed.push_back(platform::resolve_path((file += path::text_windows).string()));
    }
    const fs::path shared = screens / path::text_windows;
    if (fs::exists(shared)) {
        auto document = read_document(shared.string(), DocumentKind::windows);
        if (!document)
            return document.reason();
        document->copies = installed;
        documents.push_back(std::move(*document));
        return {};
    }
    for (const std::string& file : installed) {
        if (!platform::file_exists(file))
            continue;
        auto document = read_document(file, DocumentKind::windows);
        if (!document)
            return document.reason();
        documents.push_back(std::move(*document));
    }
    return {};
}

} // namespace

Result<std::vector<Document>> find_documents(const std::string& folder, const std::string& screens) {
    std::vector<Document> documents;
    for (const std::string& file : source_files(screens)) {
        auto document = read_document(file, DocumentKind::screen);
        if (!document)
            return Failure{document.reason()};
        documents.push_back(std::move(*document));
    }
    if (documents.empty()) {
        auto made = make_sources(folder, screens);
        if (!made)
            return made;
        documents = std::move(*made);
    }
    if (std::string reason = add_windows(folder, screens, documents); !reason.empty())
        return Failure{std::move(reason)};
    std::ranges::sort(documents, {}, &Document::name);
    return documents;
}

} // namespace vcc::kit::edit
