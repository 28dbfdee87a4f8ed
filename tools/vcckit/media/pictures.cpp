#include "vcckit/media/pictures.h"

#include "vcckit/faults/report.h"
#include "vcckit/text/nearest.h"

#include "core/files.h"
#include "display/picture.h"
#include "platform/files.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <span>

namespace vcc::kit {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t picture_size_limit = 64u << 20;

std::uint8_t byte_at(std::string_view bytes, std::size_t at) {
    return static_cast<std::uint8_t>(bytes[at]);
}

/// A file of the same folder with a similar name.
std::string nearest_file(const std::string& path) {
    const std::string plain = with_slashes(path), folder = plain.substr(0, plain.rfind('/') + 1);
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator file(platform::system_path(platform::resolve_path(folder)), error), end;
         !error && file != end; file.increment(error))
        names.push_back(platform::name_of(file->path().filename()));
    std::ranges::sort(names);
    const std::string nearest = nearest_word(plain.substr(folder.size()), names);
    return nearest.empty() ? "" : folder + nearest;
}

/// Why the program refuses the bytes of a picture.
std::string fault_of_picture(std::string_view bytes) {
    struct Kind {
        std::string_view mark, name;
    };
    constexpr Kind kinds[] = {{"\x89PNG", "PNG"}, {"\xFF\xD8\xFF", "JPEG"}, {"BM", "BMP"}, {"GIF8", "GIF"}};
    for (const Kind& kind : kinds)
        if (bytes.starts_with(kind.mark))
            return "is a " + std::string(kind.name) + " file under the name of a PCX file";
    constexpr std::uint8_t manufacturer = 10;
    if (bytes.size() < picture_header_size || byte_at(bytes, 0) != manufacturer)
        return "is no PCX file";
    const PictureHeader header =
        read_picture_header(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
    const int bits = byte_at(bytes, 3), planes = byte_at(bytes, 65);
    if (bits == 8 && planes == 4)
        return "has four planes: save it without alpha";
    if (bits != 8 || (planes != 1 && planes != 3))
        return "has " + std::to_string(planes) + (planes == 1 ? " plane of " : " planes of ") + std::to_string(bits) +
               (bits == 1 ? " bit" : " bits") + ": save it with 8 bits and a palette, or with 24 bits";
    if (header.width < 1 || header.height < 1 || header.width > picture_limit || header.height > picture_limit)
        return "is " + std::to_string(header.width) + " x " + std::to_string(header.height) + " pixels, at most " +
               std::to_string(picture_limit) + " per side can be read";
    return unfit_picture;
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
    if (!bytes && !platform::file_exists(path))
        return {nullptr, bytes.reason(), FaultCode::file_missing, "add the picture", nearest_file(path)};
    if (!bytes)
        return {nullptr, bytes.reason()};
    PictureCheck check{load_picture(path).value_or(nullptr), ""};
    if (!check.bitmap)
        check.fault = fault_of_picture(*bytes);
    else if (!pcx_is_complete(*bytes))
        check = {std::move(check.bitmap), "is truncated", FaultCode::file_cut};
    return check;
}

} // namespace vcc::kit
