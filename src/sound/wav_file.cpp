#include "sound/wav_file.h"

#include "platform/files.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>
#include <optional>
#include <string_view>

namespace vcc {

namespace {

constexpr int pcm_format = 1;
constexpr std::uint32_t lowest_rate = 1000, highest_rate = 192000;

// Parts of the file, in its own byte order.
struct ChunkHead {
    char name[4];
    std::uint32_t length;

    bool is(std::string_view wanted) const { return std::string_view(name, sizeof name) == wanted; }
};
struct FileHead {
    ChunkHead riff;
    char kind[4];
};
struct Format {
    std::uint16_t coding, channels;
    std::uint32_t rate, bytes_per_second;
    std::uint16_t frame_bytes, bits;
};

struct WavBytes {
    std::FILE* file;
    std::int64_t size;

    template <class Part>
    std::optional<Part> read(std::int64_t at) const {
        Part part;
        if (at + std::int64_t{sizeof part} > size || std::fseek(file, static_cast<long>(at), SEEK_SET) != 0 ||
            std::fread(&part, sizeof part, 1, file) != 1)
            return std::nullopt;
        return part;
    }
};

bool is_playable(const Format& format) {
    return format.coding == pcm_format && format.rate >= lowest_rate && format.rate <= highest_rate &&
           (format.channels == 1 || format.channels == 2) && (format.bits == 8 || format.bits == 16);
}

WavHeader read_header(const WavBytes& bytes) {
    const auto head = bytes.read<FileHead>(0);
    if (!head || !head->riff.is("RIFF") || std::string_view(head->kind, sizeof head->kind) != "WAVE")
        return {};
    WavHeader header;
    std::int64_t at = sizeof(FileHead);
    while (const auto chunk = bytes.read<ChunkHead>(at)) {
        at += sizeof(ChunkHead);
        std::int64_t length = chunk->length;
        if (chunk->is("data")) {
            length = std::min(length, bytes.size - at);
            header.data_offset = static_cast<long>(at);
            header.data_length =
                static_cast<long>(length - length % header.frame_bytes()); // else repeats swap channels
            return header;
        }
        if (chunk->is("fmt ")) {
            const auto format = bytes.read<Format>(at);
            if (!format || !is_playable(*format))
                return {};
            header.rate = static_cast<int>(format->rate);
            header.bits = format->bits;
            header.channels = format->channels;
            length = std::max<std::int64_t>(length, sizeof(Format));
        }
        at += length + length % 2;
    }
    return {};
}

} // namespace

WavHeader parse_wav_header(const std::string& path) {
    if (!platform::file_exists(path)) // opening a pipe would wait for its other end
        return {};
    const std::string name = platform::resolve_path(path);
    const FilePtr file(platform::open_file(name, "rb"));
    std::error_code error; // the size is then the largest number
    const auto size = std::min<std::uintmax_t>(std::filesystem::file_size(platform::system_path(name), error),
                                               std::numeric_limits<std::int32_t>::max());
    return file ? read_header({file.get(), static_cast<std::int64_t>(size)}) : WavHeader();
}

// The library's own load_wav() trusts every length in the file; here the header is checked before memory is allocated.
Result<SamplePtr> load_effect_file(const std::string& path) {
    const WavHeader header = parse_wav_header(path);
    if (header.data_offset == 0)
        return Failure{unfit_wav};
    const FilePtr file(platform::open_file(platform::resolve_path(path), "rb"));
    if (!file || std::fseek(file.get(), header.data_offset, SEEK_SET) != 0)
        return Failure{"cannot be read"};

    const long frames = std::max(header.data_length / header.frame_bytes(), 1L);
    SamplePtr sample(
        create_sample(header.bits, header.channels == 2 ? TRUE : FALSE, header.rate, static_cast<int>(frames)));
    if (!sample)
        return Failure{"does not fit in memory"};
    const auto size = static_cast<std::size_t>(frames * header.frame_bytes());
    auto* const bytes = static_cast<unsigned char*>(sample->data);
    const auto wanted = std::min(static_cast<std::size_t>(header.data_length), size);
    const std::size_t count = std::fread(bytes, 1, wanted, file.get());
    std::fill(bytes + count, bytes + size, silent_byte(header.bits));
    if (header.bits == 16)
        flip_sign_bits({bytes, size});
    return sample;
}

void flip_sign_bits(std::span<unsigned char> bytes) {
    for (std::size_t at = 0; at < bytes.size(); ++at) // every byte: the compiler then uses wide registers
        bytes[at] = static_cast<unsigned char>(bytes[at] ^ at % 2 * 0x80);
}

void fade_in(std::span<unsigned char> bytes, int bits, int frame_bytes, int length) {
    const auto sample_bytes = static_cast<std::size_t>(bits / 8);
    const auto frame = static_cast<std::size_t>(frame_bytes);
    const std::size_t end = std::min(bytes.size(), frame * static_cast<std::size_t>(std::max(length, 0)));
    for (std::size_t at = 0; at + sample_bytes <= end; at += sample_bytes) {
        const auto level = static_cast<std::int64_t>(at / frame);
        if (sample_bytes == 1) {
            bytes[at] = static_cast<unsigned char>(silent_byte(8) + (bytes[at] - silent_byte(8)) * level / length);
            continue;
        }
        std::int16_t sample = 0;
        std::memcpy(&sample, &bytes[at], sizeof sample);
        sample = static_cast<std::int16_t>(sample * level / length);
        std::memcpy(&bytes[at], &sample, sizeof sample);
    }
}

} // namespace vcc
