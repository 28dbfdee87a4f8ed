// Files that come into being whole or not at all, and commands that may be broken off.
#pragma once

#include "core/handles.h"

#include <cstdio>
#include <string>

namespace vcc::kit {

/// Written beside its name and put there by commit(). What is not committed is removed again, and the file that had
/// the name before stays as it was.
class NewFile {
public:
    explicit NewFile(std::string path);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// Null when the file cannot be written; reason() then says why.
    std::FILE* stream() const { return file_.get(); }

    bool write(const void* bytes, std::size_t count);

    /// The name that the file has until then.
    const std::string& temporary_name() const { return temporary_; }

    /// False when something could not be written.
    bool flush();

    /// Ends the writing; false when the file did not reach its place.
    bool commit();

    /// "cannot write images/menu.pcx: No space left on device".
    const std::string& reason() const { return reason_; }

private:
    bool fail();

    std::string path_, temporary_, reason_;
    FilePtr file_;
    bool made_ = false;
};

/// As long as it lives, a request to end the process (Ctrl+C, SIGTERM, SIGHUP) only makes interrupted() true, so that
/// what is begun can be taken back; a second one ends the process. Afterwards the process ends as the first one asked:
/// with several guards, when the outermost one goes.
class InterruptionGuard {
public:
    InterruptionGuard();
    ~InterruptionGuard();
    InterruptionGuard(const InterruptionGuard&) = delete;
    InterruptionGuard& operator=(const InterruptionGuard&) = delete;
};
bool interrupted();

} // namespace vcc::kit
