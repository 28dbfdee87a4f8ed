#include "vcckit/edit/folder_lock.h"

#include "vcckit/edit/operation.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vcc::kit::edit {

namespace {

/// The process that holds a lock on the folder, 0 when the system does not say. A line of /proc/locks:
/// "4: FLOCK  ADVISORY  WRITE 1234 08:01:5678 0 EOF".
long holder_of(int descriptor) {
    struct stat folder {};
    if (::fstat(descriptor, &folder) != 0)
        return 0;
    const std::string node = ":" + std::to_string(folder.st_ino);
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        std::istringstream words(line);
        std::string number, kind, mode, access, place;
        long process = 0;
        if (words >> number >> kind >> mode >> access >> process >> place && kind == "FLOCK" && place.ends_with(node))
            return process;
    }
    return 0;
}

} // namespace

FolderLock::FolderLock(const std::string& folder)
    : folder_(folder), descriptor_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (descriptor_ < 0)
        throw Refused(folder + ": " + std::strerror(errno));
    if (::flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
        return;
    const long holder = holder_of(descriptor_);
    ::close(descriptor_);
    throw Refused(folder + " is open in another editor" + (holder > 0 ? ", process " + std::to_string(holder) : ""));
}

bool FolderLock::is_in_place() const {
    struct stat held {
    }, named{};
    return ::fstat(descriptor_, &held) == 0 && ::stat(folder_.c_str(), &named) == 0 && held.st_ino == named.st_ino &&
           held.st_dev == named.st_dev;
}

FolderLock::~FolderLock() {
    ::close(descriptor_);
}

} // namespace vcc::kit::edit
