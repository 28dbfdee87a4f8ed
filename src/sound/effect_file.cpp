#include "sound/effect_file.h"

#include "platform/files.h"
#include "sound/pcm.h"
#include "sound/wav_header.h"

#include <algorithm>
#include <cstdio>

namespace vcc {

// The library's own load_wav() trusts every length in the file; here the header is checked before memory is allocated.
Result<SamplePtr> load_effect_file(const std::string& path) {
    const WavHeader header = parse_wav_header(path);
    if (header.data_offset == 0)
        return Failure{unfit_wav};
    // The library's packfiles read byte by byte: a film's sound would take 20 ms.
    const FilePtr file(std::fopen(platform::resolve_path(path).c_str(), "rb"));
    if (!file || std::fseek(file.get(), header.data_offset, SEEK_SET) != 0)
        return Failure{"cannot be read"};

    const long frame_bytes = long{header.bits / 8} * header.channels;
    const long frames = std::max(header.data_length / frame_bytes, 1L);
    SamplePtr sample(
        create_sample(header.bits, header.channels == 2 ? TRUE : FALSE, header.rate, static_cast<int>(frames)));
    if (!sample)
        return Failure{"does not fit in memory"};
    const auto size = static_cast<std::size_t>(frames * frame_bytes);
    auto* const bytes = static_cast<unsigned char*>(sample->data);
    const auto wanted = std::min(static_cast<std::size_t>(header.data_length), size);
    const std::size_t count = std::fread(bytes, 1, wanted, file.get());
    std::fill(bytes + count, bytes + size, silent_byte(header.bits));
    if (header.bits == 16)
        flip_sign_bits({bytes, size});
    return sample;
}

} // namespace vcc
