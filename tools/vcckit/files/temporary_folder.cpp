#include "vcckit/files/temporary_folder.h"

#include <random>
#include <system_error>

namespace vcc::kit {

namespace fs = std::filesystem;

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    if (!path_.empty())
        fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::make() {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error) / ("vcckit-" + std::to_string(std::random_device{}()));
    if (error || !fs::create_directory(folder, error))
        return "cannot make the folder " + folder.string() + ": " + error.message();
    path_ = folder;
    fs::permissions(path_, fs::perms::owner_all, error);
    return {};
}

} // namespace vcc::kit
