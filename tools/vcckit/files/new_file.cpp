#include "vcckit/files/new_file.h"

#include "platform/files.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace vcc::kit {

namespace {

volatile std::sig_atomic_t request = 0;
int guards = 0; ///< alive; nested ones change nothing

constexpr int requests[] = {
    SIGINT,
    SIGTERM,
#ifdef SIGHUP
    SIGHUP,
#endif
};

using Handler = void (*)(int);
std::array<Handler, std::size(requests)> before; ///< what the outermost guard has replaced

void take_request(int signal) {
    request = signal;
    std::signal(signal, SIG_DFL);
}

} // namespace

NewFile::NewFile(std::string path) : path_(std::move(path)), temporary_(path_ + ".new") {
    std::error_code error;
    const std::filesystem::file_status there = std::filesystem::status(platform::system_path(path_), error);
    if (std::filesystem::is_directory(there)) {
        errno = EISDIR;
        fail();
        return;
    }
    if (std::filesystem::exists(there) && !std::filesystem::is_regular_file(there)) {
        reason_ = "cannot write " + path_ + ": is not a file"; // a device or a pipe would be gone
        return;
    }
    file_.reset(platform::open_file(temporary_, "wb"));
    made_ = file_ != nullptr;
    if (!file_)
        fail();
}

NewFile::~NewFile() {
    file_.reset();
    std::error_code ignored;
    if (made_)
        std::filesystem::remove(platform::system_path(temporary_), ignored);
}

bool NewFile::fail() {
    if (reason_.empty())
        reason_ = "cannot write " + path_ + ": " + std::strerror(errno);
    return false;
}

bool NewFile::write(std::string_view bytes) {
    return file_ && (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) == bytes.size() || fail());
}

bool NewFile::flush() {
    return file_ && (std::fflush(file_.get()) == 0 || fail());
}

bool NewFile::commit() {
    if (!reason_.empty() || !flush())
        return false;
    file_.reset();
    if (!platform::replace_file(temporary_, path_))
        return fail();
    made_ = false;
    return true;
}

std::string FileSet::write(const std::string& name, std::string_view bytes) {
    const std::string path = platform::resolve_path(name);
    std::error_code error;
    if (const std::filesystem::path folder = platform::system_path(path).parent_path(); !folder.empty())
        std::filesystem::create_directories(folder, error);
    if (error)
        return "cannot write " + path + ": " + error.message();
    auto file = std::make_unique<NewFile>(path);
    if (!file->write(bytes) || !file->flush())
        return file->reason();
    files_.push_back(std::move(file));
    return {};
}

void FileSet::remove(const std::string& name) {
    removed_.push_back(platform::resolve_path(name));
}

std::string FileSet::commit() {
    const InterruptionGuard guard;
    for (const auto& file : files_)
        if (!file->commit())
            return file->reason();
    std::error_code ignored;
    for (const std::string& path : removed_)
        std::filesystem::remove(platform::system_path(path), ignored);
    files_.clear();
    removed_.clear();
    return {};
}

std::string write_whole_file(const std::string& name, std::string_view bytes) {
    NewFile file(platform::resolve_path(name)); // in a folder that exists
    return file.write(bytes) && file.commit() ? "" : file.reason();
}

InterruptionGuard::InterruptionGuard() {
    if (guards++ > 0)
        return;
    for (std::size_t i = 0; i < before.size(); ++i)
        before[i] = std::signal(requests[i], take_request);
}

InterruptionGuard::~InterruptionGuard() {
    if (--guards > 0)
        return;
    for (std::size_t i = 0; i < before.size(); ++i)
        if (before[i] != SIG_ERR)
            std::signal(requests[i], before[i]);
    const int asked = request;
    request = 0;
    if (asked != 0)
        std::raise(asked);
}

bool interrupted() {
    return request != 0;
}

} // namespace vcc::kit
