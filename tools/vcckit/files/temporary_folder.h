// A folder that is gone when its owner is.
#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>
#include <utility>

namespace vcc::kit {

class TemporaryFolder {
public:
    TemporaryFolder() = default;
    explicit TemporaryFolder(std::filesystem::path path) : path_(std::move(path)) {}
    ~TemporaryFolder() {
        std::error_code ignored;
        if (!path_.empty())
            std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Empty, or why it could not be created. Nobody else can read it.
    std::string make() {
        std::error_code error;
        const std::filesystem::path folder =
            std::filesystem::temp_directory_path(error) / ("vcckit-" + std::to_string(std::random_device{}()));
        if (error || !std::filesystem::create_directory(folder, error))
            return "cannot make the folder " + folder.string() + ": " + error.message();
        path_ = folder;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, error);
        return {};
    }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace vcc::kit
