#include "core/files.h"

#include "core/handles.h"
#include "platform/files.h"

#include <filesystem>
#include <system_error>

namespace vcc {

namespace {

Failure unreadable() {
    return {"cannot be read"};
}

} // namespace

Result<std::string> read_file(std::string_view name, std::size_t size_limit) {
    const std::string path = platform::resolve_path(name);
    // A folder or a pipe would open too, and a pipe would block.
    std::error_code error;
    if (const auto file = platform::system_path(path); !std::filesystem::is_regular_file(file, error))
        return std::filesystem::exists(file, error) ? unreadable() : Failure{std::string(missing_file)};
    const FilePtr file(platform::open_file(path, "rb"));
    if (!file)
        return unreadable();
    std::setvbuf(file.get(), nullptr, _IONBF, 0); // one read, directly into the text
    const long size = std::fseek(file.get(), 0, SEEK_END) == 0 ? std::ftell(file.get()) : -1;
    if (size < 0 || static_cast<std::size_t>(size) > size_limit || std::fseek(file.get(), 0, SEEK_SET) != 0)
        return unreadable();
    std::string bytes(static_cast<std::size_t>(size), '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get()) != 0)
        return unreadable();
    return bytes;
}

} // namespace vcc
