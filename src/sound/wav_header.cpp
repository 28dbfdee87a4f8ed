#include "sound/wav_header.h"

#include "core/handles.h"
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string_view>

namespace vcc {

namespace {

constexpr long chunk_header_size = 8;
constexpr long format_size = 16; // bytes of a "fmt " chunk that are read
constexpr int pcm_format = 1;
constexpr int lowest_rate = 1000;
constexpr int highest_rate = 192000;

/// Reads a packfile forward, never past the size of the file.
class ForwardReader {
public:
    ForwardReader(PACKFILE* file, long size) : file_(file), size_(size) {}

    long position() const { return position_; }
    long remaining() const { return size_ - position_; }

    template <std::size_t N>
    bool read(std::array<char, N>& bytes) {
        if (remaining() < static_cast<long>(N) || pack_fread(bytes.data(), N, file_) != static_cast<long>(N))
            return false;
        position_ += static_cast<long>(N);
        return true;
    }
    bool skip(std::uint64_t count) {
        while (count > 0 && remaining() > 0) {
            const long step = static_cast<long>(std::min<std::uint64_t>(count, 1L << 30));
            if (step > remaining() || pack_fseek(file_, static_cast<int>(step)) != 0)
                return false;
            position_ += step;
            count -= static_cast<std::uint64_t>(step);
        }
        return count == 0;
    }
    std::uint16_t word() {
        position_ += 2;
        return static_cast<std::uint16_t>(pack_igetw(file_));
    }
    std::uint32_t long_word() {
        position_ += 4;
        return static_cast<std::uint32_t>(pack_igetl(file_));
    }

private:
    PACKFILE* file_;
    long size_;
    long position_ = 0;
};

/// Reads the 16 bytes of a "fmt " chunk that matter.
bool read_format(ForwardReader& reader, WavHeader& header) {
    if (reader.remaining() < format_size || reader.word() != pcm_format)
        return false;
    header.channels = reader.word();
    const std::uint32_t rate = reader.long_word();
    if (rate < lowest_rate || rate > highest_rate || !reader.skip(6))
        return false;
    header.rate = static_cast<int>(rate);
    header.bits = reader.word();
    return (header.channels == 1 || header.channels == 2) && (header.bits == 8 || header.bits == 16);
}

WavHeader read_header(ForwardReader reader) {
    std::array<char, 12> riff{};
    if (!reader.read(riff) || std::string_view(riff.data(), 4) != "RIFF" || std::string_view(&riff[8], 4) != "WAVE")
        return {};
    WavHeader header;
    while (reader.remaining() >= chunk_header_size) {
        std::array<char, 4> id{};
        if (!reader.read(id))
            return {};
        const std::string_view name(id.data(), id.size());
        const std::uint64_t length = reader.long_word();
        const std::uint64_t padded = length + (length & 1);
        if (name == "data") {
            const long frame = long{header.bits / 8} * header.channels;
            const long available =
                static_cast<long>(std::min<std::uint64_t>(length, static_cast<std::uint64_t>(reader.remaining())));
            header.data_offset = reader.position();
            header.data_length = available - available % frame; // a partial frame would swap the channels at a repeat
            return header;
        }
        if (name == "fmt ") {
            if (!read_format(reader, header) || (length > format_size && !reader.skip(padded - format_size)))
                return {};
        } else if (!reader.skip(padded)) {
            return {};
        }
    }
    return {};
}

} // namespace

WavHeader parse_wav_header(const std::string& path) {
    // Regular files only: the library would also look for "name#object" in its own archives.
    if (!platform::file_exists(path))
        return {};
    const std::string name = platform::resolve_path(path);
    const auto size = std::min<std::uint64_t>(file_size_ex(name.c_str()), std::numeric_limits<std::int32_t>::max());
    const PackfilePtr file(pack_fopen(name.c_str(), "r"));
    if (!file)
        return {};
    return read_header(ForwardReader(file.get(), static_cast<long>(size)));
}

} // namespace vcc
