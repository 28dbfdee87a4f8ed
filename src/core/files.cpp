#include "core/files.h"

#include "platform/files.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace vcc {

Result<std::string> read_file(std::string_view name, std::size_t size_limit) {
    const Failure unreadable{"cannot be read"};
    const std::filesystem::path path = platform::system_path(platform::resolve_path(name));
    // A folder or a pipe would open too, and a pipe would block.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return std::filesystem::exists(path, error) ? unreadable : Failure{std::string(missing_file)};
    const auto size = std::filesystem::file_size(path, error);
    std::ifstream file(path, std::ios::binary);
    if (error || size > size_limit || !file)
        return unreadable;
    std::string bytes(size, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(size));
    if (file.bad())
        return unreadable;
    bytes.resize(static_cast<std::size_t>(file.gcount())); // it may have become shorter
    return bytes;
}

} // namespace vcc
