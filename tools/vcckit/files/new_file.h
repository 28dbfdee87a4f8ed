// Files that are written whole or not at all, one by one or together, and commands that can be interrupted.
#pragma once

#include "core/handles.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// Written beside its place and moved there by commit(). Without commit() it is removed, and a former file of the name
/// stays unchanged.
class NewFile {
public:
    explicit NewFile(std::string path);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// Null if the file cannot be written; see reason().
    std::FILE* stream() const { return file_.get(); }

    /// False if that fails, or the file cannot be written at all.
    bool write(std::string_view bytes);

    const std::string& name() const { return path_; }
    /// The file's name until commit().
    const std::string& temporary_name() const { return temporary_; }

    bool flush(); ///< likewise

    /// Moves the file into place; false if that fails.
    bool commit();

    /// "cannot write images/menu.pcx: No space left on device".
    const std::string& reason() const { return reason_; }

private:
    bool fail();

    std::string path_, temporary_, reason_;
    FilePtr file_;
    bool made_ = false;
};

/// Writes files beside their places and then moves all of them into place. Without commit() no trace remains. A name
/// that exists in other letter case means that file.
class FileSet {
public:
    /// Writes a file beside its place and creates its folder. Returns the reason of a failure, else an empty text.
    std::string write(const std::string& name, std::string_view bytes);

    /// Marks a file, which need not exist, for removal by commit().
    void remove(const std::string& name);

    /// Moves all files into place. Returns the reason of a failure; the files before it are then in place. Requests to
    /// end the process wait until then.
    std::string commit();

private:
    std::vector<std::unique_ptr<NewFile>> files_;
    std::vector<std::string> removed_;
};

/// Writes a single file; returns the reason of a failure.
std::string write_whole_file(const std::string& name, std::string_view bytes);

/// While it lives, the first request to end the process (Ctrl+C, SIGTERM, SIGHUP) only makes interrupted() true, so
/// that the work can be undone; a second one ends the process. At its end (with nested guards, that of the outermost)
/// the process ends by the first request.
class InterruptionGuard {
public:
    InterruptionGuard();
    ~InterruptionGuard();
    InterruptionGuard(const InterruptionGuard&) = delete;
    InterruptionGuard& operator=(const InterruptionGuard&) = delete;
};
bool interrupted();

} // namespace vcc::kit
