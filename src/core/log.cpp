#include "core/log.h"

#include "core/handles.h"
#include "core/installation.h"
#include "core/text.h"
#include "platform/files.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <system_error>

namespace vcc {

void write_log(std::string_view message) {
    const std::time_t now = std::time(nullptr);
    const char* const stamp = std::ctime(&now); // null for a time beyond the calendar
    const std::string time_text(cut_at(stamp != nullptr ? stamp : "", '\n'));

    const std::string name = platform::resolve_path(path::log);
    std::error_code error;
    if (std::filesystem::is_fifo(name, error))
        return; // would block until somebody reads it
    const FilePtr file(std::fopen(name.c_str(), "at"));
    if (!file)
        return;
    std::fprintf(file.get(), "%s [%s]\n%.*s\n\n", module_prefix.c_str(), time_text.c_str(),
                 static_cast<int>(message.size()), message.data());
}

std::string format_text(const char* format, ...) {
    std::array<char, 4096> buffer{};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    va_end(arguments);
    return buffer.data();
}

} // namespace vcc
