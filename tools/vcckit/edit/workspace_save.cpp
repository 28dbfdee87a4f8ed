// The way of documents to disk.
#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/workspace.h"
#include "vcckit/source/packed_screen.h"

#include "core/files.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vcc::kit::edit {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

/// A document on its way to disk.
struct Leaving {
    Document* document = nullptr;
    std::string bytes;             ///< of its file
    std::vector<std::string> made; ///< of it
    std::optional<Screen> screen;  ///< that it packs
    std::unique_ptr<NewFile> file;
};

/// Refuses a second source of the same screen.
void expect_one_each(const std::vector<Leaving>& leaving) {
    std::map<std::string, std::string> files;
    for (const Leaving& each : leaving)
        for (const std::string& file : each.made)
            if (const auto [other, added] = files.emplace(file, each.document->file); !added)
                throw Refused(each.document->file + " makes the same screen as " + other->second);
}

void expect_done(const std::string& reason) {
    if (!reason.empty())
        throw Refused(reason);
}

/// Puts the files of a document beside their places, and their names to `written`.
void stage(Leaving& leaving, const std::string& folder, FileSet& files, std::vector<std::string>& written) {
    const Document& document = *leaving.document;
    if (leaving.screen) {
        expect_done(write_packed_screen(*leaving.screen, folder, files, written));
    } else {
        for (const std::string& file : leaving.made)
            expect_done(files.write(file, leaving.bytes));
        written.insert(written.end(), leaving.made.begin(), leaving.made.end());
    }
    std::error_code error;
    const fs::path path = fs::weakly_canonical(document.file, error); // a link stays a link
    fs::create_directories(path.parent_path(), error);
    leaving.file = std::make_unique<NewFile>(error ? document.file : path.string());
    if (!leaving.file->write(leaving.bytes) || !leaving.file->flush() || ::fsync(::fileno(leaving.file->stream())) != 0)
        throw Refused(leaving.file->reason().empty() ? "cannot write " + document.file + ": " + std::strerror(errno)
                                                     : leaving.file->reason());
    written.push_back(document.file);
}

/// Until nobody writes into a file any more, but not for long: the system gives no lease to read until then.
void wait_for_writers(int descriptor) {
    static const auto ignored = std::signal(SIGIO, SIG_IGN); // sent when somebody opens it meanwhile
    static_cast<void>(ignored);
    for (int tries = 0; tries < 500 && ::fcntl(descriptor, F_SETLEASE, F_RDLCK) != 0 && errno == EAGAIN; ++tries)
        std::this_thread::sleep_for(1ms);
    ::fcntl(descriptor, F_SETLEASE, F_UNLCK);
}

/// Moves a file into place in one step. What was there by then, up to the last byte of a program that was still writing
/// it; nothing when there was no file. It lies under the temporary name afterwards. Throws Refused.
std::optional<std::string> exchange(const std::string& temporary, const std::string& file) {
    const auto renamed = [&](unsigned how) {
        return ::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, file.c_str(), how) == 0;
    };
    struct stat before {};
    if (::stat(file.c_str(), &before) == 0)
        ::chmod(temporary.c_str(), before.st_mode & 07777);
    if (renamed(RENAME_NOREPLACE))
        return std::nullopt;
    if (!renamed(RENAME_EXCHANGE)) {
        if (errno != EINVAL && errno != ENOENT)
            throw Refused("cannot write " + file + ": " + std::strerror(errno));
        // A file system that cannot exchange files: a look as late as possible has to do. Or it has just been removed.
        auto bytes = read_file(file, document_limit);
        if (!renamed(0))
            throw Refused("cannot write " + file + ": " + std::strerror(errno));
        return bytes ? std::optional(std::move(*bytes)) : std::nullopt;
    }
    const int descriptor = ::open(temporary.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        throw Refused("cannot read what was in " + file + ": " + std::strerror(errno));
    wait_for_writers(descriptor);
    ::close(descriptor);
    auto bytes = read_file(temporary, document_limit);
    if (!bytes)
        throw Refused(file + " " + bytes.reason());
    return std::move(*bytes);
}

} // namespace

std::vector<std::string> Workspace::made_files(const Document& document) const {
    std::vector<std::string> files;
    for (const std::string& name : document.installs)
        if (std::string file = installed(name); file != document.file)
            files.push_back(std::move(file));
    if (!row_of(document.kind).packed)
        return files;
    for (const LanguageRow& language : languages)
        for (const char* extension : {".slt", ".tgl"})
            files.push_back((fs::path(folder_) / slot_file_name(language, screen_of(document)))
                                .replace_extension(extension)
                                .string());
    return files;
}

/// Puts a document's file in place; what another program has written into it since it was read comes in.
bool Workspace::put(Document& document, NewFile& file) {
    const auto before = exchange(file.temporary_name(), file.name());
    const std::string text = document.text;
    const std::string other = before ? text_of_bytes(*before, document.kind) : document.disk;
    if (other != document.disk && other != text)
        bring_in(document, document.disk, other);
    document.disk = text;
    document.on_disk = true;
    document.made = document.packed_files_old = false;
    document.history.end_row();
    ++document.revision;
    return document.text != text || !document.conflicts.empty();
}

Saved Workspace::save(const CheckSource& check) {
    Saved saved;
    constexpr int rounds = 10; ///< for as often does another program come in between
    for (int round = 0; round < rounds && save_once(check, saved);)
        ++round;
    return saved;
}

/// Whether there is something to save again.
bool Workspace::save_once(const CheckSource& check, Saved& saved) {
    expect_decided();
    expect_done(away());
    take_disk_changes();
    std::vector<Leaving> leaving;
    saved.faults.clear();
    for (auto& [name, document] : documents_) {
        if (!document.conflicts.empty())
            throw Refused(name + (document.conflicts.front().removed
                                      ? " was changed here, and its file is gone: choose what counts"
                                      : " was changed on disk in the same lines: choose which to keep"));
        if (!document.dirty())
            continue;
        std::vector<std::string> made = made_files(document);
        std::vector<std::string> all = made;
        all.push_back(document.file);
        for (const std::string& file : all)
            if (!holds(file))
                throw Refused(file +
                              " is a link that leads out of the installation and its sources: nothing is written");
        auto bytes = bytes_of_text(document.text, document.kind);
        if (!bytes)
            throw Refused(name + " has a character outside Windows Latin-1");
        std::optional<Screen> screen;
        if (row_of(document.kind).packed) {
            SourceCheck checked = check(document.file, document.text);
            saved.faults.insert(saved.faults.end(), checked.faults.begin(), checked.faults.end());
            if (!checked.faults.empty())
                continue;
            screen = std::move(checked.screen);
        }
        leaving.push_back({&document, std::move(*bytes), std::move(made), std::move(screen), nullptr});
    }
    if (leaving.empty())
        return false;
    expect_one_each(leaving);

    // From here on an end of the process may leave some of the files new and some old.
    for (const Leaving& each : leaving)
        each.document->packed_files_old = true;
    keep();
    FileSet files;
    saved.files.clear();
    bool again = false;
    try {
        for (Leaving& each : leaving)
            stage(each, folder_, files, saved.files);
        expect_done(files.commit());
        for (Leaving& each : leaving)
            if (put(*each.document, *each.file))
                again = true; // its temporary file holds what came in, and stays until that is kept
            else
                each.file.reset(); // before the note of this save, which would clear it up, goes
    } catch (const Refused&) {
        keep();
        throw;
    }
    keep();
    return again;
}

} // namespace vcc::kit::edit
