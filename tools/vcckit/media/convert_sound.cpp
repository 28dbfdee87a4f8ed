#include "vcckit/media/convert.h"

#include "vcckit/media/themes.h"

#include "core/log.h"

#include <algorithm>

namespace vcc::kit {

namespace {

constexpr int lowest_rate = 1000, highest_rate = 192000, usual_rate = 48000;
constexpr int sample_size = 2;
constexpr std::size_t wav_size_limit = (std::size_t{1} << 31) - 1024; ///< bytes of sound; safe for a WAV header

std::string wav_header(std::size_t size, int rate, int channels) {
    std::string bytes;
    const auto add = [&](std::string_view name, std::size_t number, int count) {
        bytes += name;
        for (int i = 0; i < count; ++i)
            bytes += static_cast<char>(number >> 8 * i & 0xFF);
    };
    const auto frame = static_cast<std::size_t>(channels * sample_size), frames = static_cast<std::size_t>(rate);
    add("RIFF", 36 + size, 4);
    add("WAVEfmt ", 16, 4);
    add("", 1, 2); // PCM
    add("", static_cast<std::size_t>(channels), 2);
    add("", frames, 4);
    add("", frames * frame, 4);
    add("", frame, 2);
    add("", 16, 2); // bits of a sample
    add("data", size, 4);
    return bytes;
}

} // namespace

Result<std::string> convert_sound(const Media& media, NewFile& file, const Progress& progress) {
    if (media.sound < 0)
        return Failure{"has no sound"};
    if (is_cut(media.path)) // FFmpeg accepts truncated files
        return Failure{"is truncated"};
    const int rate = media.rate >= lowest_rate && media.rate <= highest_rate ? media.rate : usual_rate;
    const int channels = std::clamp(media.channels, 1, 2);
    const double second = double{sample_size} * rate * channels; // bytes
    std::size_t size = 0;
    const auto begin = [&] {
        return std::fseek(file.stream(), 0, SEEK_SET) == 0 && file.write(wav_header(size, rate, channels));
    };
    if (!file.stream() || !begin()) // again when the length is known
        return Failure{file.reason()};
    std::string fault = run_ffmpeg(
        media, media.sound, "-f s16le -c:a pcm_s16le -ac " + std::to_string(channels) + " -ar " + std::to_string(rate),
        "pipe:1", false, [&](std::string_view piece) {
            size += piece.size();
            if (media.seconds > 0)
                progress(static_cast<double>(size) / second / media.seconds);
            return size <= wav_size_limit && file.write(piece);
        });
    if (size > wav_size_limit)
        fault = "is too long for a WAV file";
    else if (fault.empty() && size == 0)
        fault = "has no sound";
    else if (fault.empty())
        begin() && file.flush();
    if (!file.reason().empty())
        fault = file.reason();
    if (!fault.empty())
        return Failure{std::move(fault)};
    return format_text("%.1f s of %d Hz, %s", static_cast<double>(size) / second, rate,
                       channels == 1 ? "mono" : "stereo");
}

} // namespace vcc::kit
