#include "vcckit/edit/exchange.h"

#include "vcckit/edit/operation.h"

#include "core/files.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vcc::kit::edit {

namespace {

using namespace std::chrono_literals;

/// Until nobody writes into a file any more, but not for long: the system gives no lease to read until then.
void wait_for_writers(int descriptor) {
    static const auto ignored = std::signal(SIGIO, SIG_IGN); // sent when somebody opens it meanwhile
    static_cast<void>(ignored);
    for (int tries = 0; tries < 500 && ::fcntl(descriptor, F_SETLEASE, F_RDLCK) != 0 && errno == EAGAIN; ++tries)
        std::this_thread::sleep_for(1ms);
    ::fcntl(descriptor, F_SETLEASE, F_UNLCK);
}

} // namespace

std::optional<std::string> exchange(const std::string& temporary, const std::string& file) {
    const auto renamed = [&](unsigned how) {
        return ::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, file.c_str(), how) == 0;
    };
    struct stat before {};
    if (::stat(file.c_str(), &before) == 0)
        ::chmod(temporary.c_str(), before.st_mode & 07777);
    const bool is_new = renamed(RENAME_NOREPLACE);
    if (!is_new && !renamed(RENAME_EXCHANGE)) {
        if (errno != EINVAL && errno != ENOENT)
            throw Refused("cannot write " + file + ": " + std::strerror(errno));
        // A file system that cannot exchange files: a look as late as possible has to do. Or it has just been removed.
        auto bytes = read_file(file, document_limit);
        if (!renamed(0))
            throw Refused("cannot write " + file + ": " + std::strerror(errno));
        return bytes ? std::optional(std::move(*bytes)) : std::nullopt;
    }
    if (is_new)
        return std::nullopt;
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

} // namespace vcc::kit::edit
