#include "vcckit/files/file_set.h"

#include "platform/files.h"

#include <filesystem>
#include <system_error>

namespace vcc::kit {

namespace fs = std::filesystem;

std::string FileSet::write(const std::string& name, std::string_view bytes) {
    const std::string path = platform::resolve_path(name);
    std::error_code error;
    if (const fs::path folder = platform::system_path(path).parent_path(); !folder.empty())
        fs::create_directories(folder, error);
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
        fs::remove(platform::system_path(path), ignored);
    files_.clear();
    removed_.clear();
    return {};
}

std::string write_whole_file(const std::string& name, std::string_view bytes) {
    NewFile file(platform::resolve_path(name)); // in a folder that exists
    return file.write(bytes) && file.commit() ? "" : file.reason();
}

} // namespace vcc::kit
