#include "pictures.h"

#include "core/files.h"
#include "display/picture.h"

#include <cstdint>

namespace vcc::kit {

namespace {

constexpr std::size_t picture_size_limit = 64u << 20;

std::uint8_t byte_at(std::string_view bytes, std::size_t at) {
    return static_cast<std::uint8_t>(bytes[at]);
}

} // namespace

bool pcx_is_complete(std::string_view bytes) {
    constexpr std::uint8_t run_mark = 0xC0;
    if (bytes.size() < picture_header_size)
        return false;
    const auto word = [&](std::size_t at) { return byte_at(bytes, at) | byte_at(bytes, at + 1) << 8; };
    const long lines = word(10) - word(6) + 1;
    const long wanted = lines * word(66) * byte_at(bytes, 65);
    long decoded = 0;
    for (std::size_t at = picture_header_size; decoded < wanted && at < bytes.size(); ++at) {
        const std::uint8_t byte = byte_at(bytes, at);
        if (byte < run_mark) {
            ++decoded;
        } else {
            decoded += byte & ~run_mark;
            ++at; // the byte that is repeated
        }
    }
    return decoded >= wanted;
}

PictureCheck check_picture(const std::string& path) {
    const auto bytes = read_file(path, picture_size_limit);
    if (!bytes)
        return {nullptr, "cannot be read"};
    PictureCheck check{load_picture(path), ""};
    if (!check.bitmap)
        check.fault = "is no picture that the program can read";
    else if (!pcx_is_complete(*bytes))
        check = {std::move(check.bitmap), "ends in the middle of the picture", FaultCode::file_cut};
    return check;
}

} // namespace vcc::kit
