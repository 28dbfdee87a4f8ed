#include "media/avi_header.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace vcc::platform {
namespace {

constexpr std::size_t chunk_head = 8, stream_head_size = 36, picture_format_size = 40, sound_format_size = 14;
constexpr std::uint32_t longest_film = 1'000'000; // frames

std::uint32_t number_at(std::string_view bytes, std::size_t offset) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[offset + i]);
    return number;
}

struct Chunk {
    std::string_view name, data; // the data end with the file at the latest
};

// Removes the next chunk from `rest`; false at its end.
bool take_chunk(std::string_view& rest, Chunk& chunk) {
    if (rest.size() < chunk_head)
        return false;
    const std::size_t size = number_at(rest, 4);
    chunk = {rest.substr(0, 4), rest.substr(chunk_head, size)};
    rest.remove_prefix(std::min(rest.size(), chunk_head + size + size % 2));
    return true;
}

bool is_list(const Chunk& chunk, std::string_view kind) {
    return chunk.name == "LIST" && chunk.data.starts_with(kind);
}

struct Stream {
    std::string_view head, format;
    bool is(std::string_view type) const { return head.size() >= stream_head_size && head.starts_with(type); }
};

Stream read_stream(std::string_view list) {
    Stream stream;
    for (Chunk chunk; take_chunk(list, chunk);) {
        if (chunk.name == "strh" && stream.head.empty())
            stream.head = chunk.data;
        else if (chunk.name == "strf" && stream.format.empty())
            stream.format = chunk.data;
    }
    return stream;
}

void read_video(const Stream& stream, AviHeader& header) {
    header.error = AviError::video_format;
    if (stream.format.size() < picture_format_size)
        return;
    const std::int64_t width = static_cast<std::int32_t>(number_at(stream.format, 4));
    const std::int64_t height = std::abs(std::int64_t{static_cast<std::int32_t>(number_at(stream.format, 8))});
    if (width < 1 || width > avi_size_limit || height < 1 || height > avi_size_limit)
        return;
    header.error = AviError::none;
    header.width = static_cast<int>(width);
    header.height = static_cast<int>(height);
    const std::uint32_t scale = number_at(stream.head, 20), rate = number_at(stream.head, 24);
    if (scale != 0 && rate != 0) {
        header.scale = scale;
        header.rate = rate;
    }
    header.start = number_at(stream.head, 28);
    header.length = number_at(stream.head, 32);
    if (header.length > longest_film)
        header.length = 0;
}

} // namespace

AviHeader read_avi_header(std::string_view bytes) {
    AviHeader header;
    header.error = AviError::bad_format;
    if (bytes.size() < 12 || !bytes.starts_with("RIFF") || bytes.substr(8, 4) != "AVI ")
        return header;
    bool video = false, audio = false;
    std::string_view file = bytes.substr(12);
    for (Chunk part; take_chunk(file, part);) {
        if (!is_list(part, "hdrl"))
            continue;
        header.error = AviError::none;
        std::string_view list = part.data.substr(4);
        for (Chunk chunk; take_chunk(list, chunk);) {
            if (!is_list(chunk, "strl"))
                continue;
            const Stream stream = read_stream(chunk.data.substr(4));
            if (stream.is("auds") && !std::exchange(audio, true) && stream.format.size() < sound_format_size) {
                header.error = AviError::audio_format; // audio errors take precedence
                return header;
            }
            if (stream.is("vids") && !std::exchange(video, true))
                read_video(stream, header);
        }
        break;
    }
    if (header.error == AviError::none && !video)
        header.error = AviError::no_video;
    return header;
}

} // namespace vcc::platform
