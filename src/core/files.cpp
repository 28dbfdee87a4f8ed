#include "core/files.h"

#include "core/handles.h"
#include "platform/files.h"

#include <array>

namespace vcc {

std::optional<std::string> read_file(std::string_view name, std::size_t size_limit) {
    // A folder or a pipe would open as well, and a pipe would block.
    if (!platform::file_exists(name))
        return std::nullopt;
    const FilePtr file(std::fopen(platform::resolve_path(name).c_str(), "rb"));
    if (!file)
        return std::nullopt;
    std::string bytes;
    std::array<char, 16384> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get())) {
        bytes.append(block.data(), count);
        if (bytes.size() > size_limit)
            return std::nullopt;
    }
    if (std::ferror(file.get()) != 0)
        return std::nullopt;
    return bytes;
}

} // namespace vcc
