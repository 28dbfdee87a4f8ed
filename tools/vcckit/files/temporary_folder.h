// A folder that is gone when its owner is.
#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace vcc::kit {

class TemporaryFolder {
public:
    TemporaryFolder() = default;
    explicit TemporaryFolder(std::filesystem::path path) : path_(std::move(path)) {}
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Empty, or why it could not be created. Nobody else can read it.
    std::string make();

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace vcc::kit
