#include "vcckit/media/themes.h"

#include "core/handles.h"
#include "platform/files.h"
#include "sound/wav_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace vcc::kit {

namespace {

constexpr long joint_frames = 512;       ///< checked on each side of the joint
constexpr double quiet_seconds = 0.05;   ///< longer silence at either end sounds like a gap
constexpr double fading_seconds = 4;     ///< before the end, searched for a fade
constexpr float quiet_level = 0.002f;    ///< about -54 dB
constexpr double least_bend = 4.0 / 128; ///< smaller bends are inaudible

/// Frames [first, first + count) of a file, interleaved, -1 to 1; fewer at the end of the file.
std::vector<float> read_frames(std::FILE* file, const WavHeader& header, long first, long count) {
    const auto frame = static_cast<std::size_t>(header.frame_bytes()),
               bytes = static_cast<std::size_t>(header.bits / 8);
    std::vector<std::uint8_t> raw(static_cast<std::size_t>(count) * frame);
    if (std::fseek(file, header.data_offset + first * header.frame_bytes(), SEEK_SET) != 0)
        return {};
    raw.resize(std::fread(raw.data(), frame, static_cast<std::size_t>(count), file) * frame);
    std::vector<float> samples;
    samples.reserve(raw.size() / bytes);
    for (std::size_t at = 0; at < raw.size(); at += bytes)
        samples.push_back(bytes == 1
                              ? (static_cast<float>(raw[at]) - 128.0f) / 128.0f
                              : static_cast<float>(static_cast<std::int16_t>(raw[at] | raw[at + 1] << 8)) / 32768.0f);
    return samples;
}

std::vector<float> channel_of(const std::vector<float>& samples, int channel, int channels) {
    std::vector<float> one;
    for (std::size_t at = static_cast<std::size_t>(channel); at < samples.size();
         at += static_cast<std::size_t>(channels))
        one.push_back(samples[at]);
    return one;
}

double level_of(std::span<const float> samples) {
    double sum = 0;
    for (const float sample : samples)
        sum += double{sample} * sample;
    return samples.empty() ? 0 : std::sqrt(sum / static_cast<double>(samples.size()));
}

bool is_quiet(const std::vector<float>& samples) {
    return std::ranges::all_of(samples, [](float sample) { return std::abs(sample) < quiet_level; });
}

/// Samples of one channel: the end of a theme and its beginning. Returns how sharply the joint bends, relative to the
/// sharpest bend beside it; a click is above 1.
double joint_ratio(std::span<const float> end, std::span<const float> beginning) {
    std::vector<double> around(end.begin(), end.end());
    around.insert(around.end(), beginning.begin(), beginning.end());
    double joint = 0, beside = 0;
    for (std::size_t i = 2; i < around.size(); ++i) {
        const double bend = std::abs(around[i] - 2 * around[i - 1] + around[i - 2]);
        const bool at_joint = i >= end.size() && i < end.size() + 2; // uses samples of both sides
        (at_joint ? joint : beside) = std::max(at_joint ? joint : beside, bend);
    }
    return joint / std::max(beside, least_bend);
}

/// Whether the last of the equal windows of samples is far softer than the loudest, so that the theme fades and its
/// beginning jumps in.
bool fades_out(std::span<const float> samples, std::size_t window) {
    constexpr double lowest = 0.25; // of the loudest: 12 dB below it
    if (window == 0 || samples.size() < 2 * window)
        return false;
    double loudest = 0, last = 0;
    for (std::size_t end = samples.size() % window + window; end <= samples.size(); end += window) {
        last = level_of(samples.subspan(end - window, window));
        loudest = std::max(loudest, last);
    }
    return last < lowest * loudest;
}

} // namespace

bool is_cut(const std::string& path) {
    const WavHeader header = parse_wav_header(path);
    const FilePtr file(platform::open_file(platform::resolve_path(path), "rb"));
    std::array<std::uint8_t, 4> length{};
    // The header's data length directly precedes the data.
    if (header.data_offset == 0 || !file ||
        std::fseek(file.get(), header.data_offset - static_cast<long>(length.size()), SEEK_SET) != 0 ||
        std::fread(length.data(), 1, length.size(), file.get()) != length.size())
        return false;
    const std::int64_t announced = length[0] | length[1] << 8 | length[2] << 16 | std::int64_t{length[3]} << 24;
    return announced - header.data_length >= header.frame_bytes();
}

std::string loop_fault(const std::string& path) {
    const WavHeader header = parse_wav_header(path);
    if (header.data_offset == 0)
        return unfit_wav;
    const long frames = header.data_length / header.frame_bytes();
    if (frames < header.rate)
        return "is shorter than a second";
    const FilePtr file(platform::open_file(platform::resolve_path(path), "rb"));
    if (!file)
        return "cannot be read";
    const long quiet_frames = std::min(frames, static_cast<long>(quiet_seconds * header.rate));
    if (is_quiet(read_frames(file.get(), header, frames - quiet_frames, quiet_frames)))
        return "ends in silence";
    if (is_quiet(read_frames(file.get(), header, 0, quiet_frames)))
        return "begins with silence";
    const long fading_frames = std::min(frames, static_cast<long>(fading_seconds * header.rate));
    const auto samples_of = static_cast<std::size_t>(header.channels) * static_cast<std::size_t>(header.rate) / 4;
    if (fades_out(read_frames(file.get(), header, frames - fading_frames, fading_frames), samples_of))
        return "fades out at its end";
    const std::vector<float> end = read_frames(file.get(), header, frames - joint_frames, joint_frames);
    const std::vector<float> beginning = read_frames(file.get(), header, 0, joint_frames);
    for (int channel = 0; channel < header.channels; ++channel)
        if (joint_ratio(channel_of(end, channel, header.channels), channel_of(beginning, channel, header.channels)) > 1)
            return "clicks where its end meets its beginning";
    return {};
}

} // namespace vcc::kit
