#include "core/files.h"

#include "core/handles.h"
#include "platform/files.h"

#include <filesystem>
#include <system_error>

namespace vcc {

std::optional<std::string> read_file(std::string_view name, std::size_t size_limit) {
    const std::string path = platform::resolve_path(name);
    // A folder or a pipe would open as well, and a pipe would block.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return std::nullopt;
    const FilePtr file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return std::nullopt;
    std::setvbuf(file.get(), nullptr, _IONBF, 0); // one read, straight into the text
    const long size = std::fseek(file.get(), 0, SEEK_END) == 0 ? std::ftell(file.get()) : -1;
    if (size < 0 || static_cast<std::size_t>(size) > size_limit || std::fseek(file.get(), 0, SEEK_SET) != 0)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size), '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get()) != 0)
        return std::nullopt;
    return bytes;
}

} // namespace vcc
