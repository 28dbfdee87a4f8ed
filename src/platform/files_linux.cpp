#include "platform/files.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vcc::platform {

namespace fs = std::filesystem;

namespace {

/// Waits until a file's contents, or a folder's entries, have reached the disk.
bool sync_to_disk(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool done = ::fsync(descriptor) == 0;
    ::close(descriptor);
    return done;
}

} // namespace

fs::path system_path(std::string_view name) {
    return name;
}

std::string name_of(const fs::path& path) {
    return path.string();
}

std::FILE* open_file(const std::string& name, const char* mode) {
    return std::fopen(name.c_str(), mode);
}

std::string program_path() {
    std::error_code error;
    const fs::path path = fs::read_symlink("/proc/self/exe", error);
    return error ? std::string() : path.string();
}

// A descriptor leads back even if the folder is renamed or its parents cannot be searched.
FolderVisit::FolderVisit(const std::string& folder) : origin_(::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    entered_ = origin_ >= 0 && ::chdir(folder.c_str()) == 0;
}

FolderVisit::~FolderVisit() {
    if (entered_ && ::fchdir(static_cast<int>(origin_)) != 0)
        std::abort(); // all file names of the program would mean other files
    if (origin_ >= 0)
        ::close(static_cast<int>(origin_));
}

bool replace_file(const std::string& temporary, const std::string& name) {
    // A link stays a link: the file behind it is replaced.
    std::error_code error;
    const fs::path real = fs::weakly_canonical(name, error);
    const std::string target = error ? name : real.string();

    struct stat before {};
    if (::stat(target.c_str(), &before) == 0) {
        if (!S_ISREG(before.st_mode)) {
            errno = EEXIST;
            return false;
        }
        ::chmod(temporary.c_str(), before.st_mode & 07777);
    }
    if (!sync_to_disk(temporary) || ::rename(temporary.c_str(), target.c_str()) != 0)
        return false;
    // Until the folder is on disk too, a power failure may bring back the old file, whole.
    const std::string folder = folder_of_program(target);
    sync_to_disk(folder.empty() ? "." : folder);
    return true;
}

} // namespace vcc::platform
