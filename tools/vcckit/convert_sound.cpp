#include "convert.h"

#include "new_file.h"
#include "themes.h"

#include "core/log.h"

#include <algorithm>

namespace vcc::kit {

namespace {

constexpr int lowest_rate = 1000, highest_rate = 192000, usual_rate = 48000;
constexpr int sample_size = 2;
constexpr std::int64_t size_limit = (std::int64_t{1} << 31) - 1024; ///< bytes of sound; safe for a WAV header

class WavWriter {
public:
    WavWriter(NewFile& file, int rate, int channels) : file_(file), rate_(rate), channels_(channels) {}

    /// Written before the first sample, and again when the length is known.
    bool write_header() {
        std::string bytes = "RIFF";
        add(bytes, static_cast<std::uint32_t>(36 + size_), 4);
        bytes += "WAVEfmt ";
        add(bytes, 16, 4);
        add(bytes, 1, 2); // PCM
        add(bytes, static_cast<std::uint32_t>(channels_), 2);
        add(bytes, static_cast<std::uint32_t>(rate_), 4);
        add(bytes, static_cast<std::uint32_t>(rate_ * channels_ * sample_size), 4);
        add(bytes, static_cast<std::uint32_t>(channels_ * sample_size), 2);
        add(bytes, 8 * sample_size, 2);
        bytes += "data";
        add(bytes, static_cast<std::uint32_t>(size_), 4);
        return std::fseek(file_.stream(), 0, SEEK_SET) == 0 && file_.write(bytes.data(), bytes.size());
    }

    bool write(const std::uint8_t* samples, int frames) {
        const std::int64_t bytes = std::int64_t{frames} * channels_ * sample_size;
        size_ += bytes;
        return file_.write(samples, static_cast<std::size_t>(bytes));
    }

    std::int64_t size() const { return size_; }
    double seconds() const { return static_cast<double>(size_) / (rate_ * channels_ * sample_size); }

private:
    static void add(std::string& bytes, std::uint32_t number, int count) {
        for (int i = 0; i < count; ++i)
            bytes += static_cast<char>(number >> 8 * i & 0xFF);
    }

    NewFile& file_;
    int rate_, channels_;
    std::int64_t size_ = 0;
};

/// Converts frames of any format to interleaved 16-bit samples.
class Resampler {
public:
    Resampler(const AVFrame& first, int rate, int channels) : channels_(channels) {
        const MediaFunctions& ffmpeg = *media_functions();
        AVChannelLayout wanted{}, given = first.ch_layout;
        ffmpeg.av_channel_layout_default(&wanted, channels);
        if (given.order == AV_CHANNEL_ORDER_UNSPEC)
            ffmpeg.av_channel_layout_default(&given, first.ch_layout.nb_channels);
        SwrContext* made = nullptr;
        if (ffmpeg.swr_alloc_set_opts2(&made, &wanted, AV_SAMPLE_FMT_S16, rate, &given,
                                       static_cast<AVSampleFormat>(first.format), first.sample_rate, 0, nullptr) >= 0)
            resampler_.reset(made);
        if (resampler_ && ffmpeg.swr_init(resampler_.get()) < 0)
            resampler_.reset();
    }

    bool usable() const { return resampler_ != nullptr; }

    /// Without a frame: the rest. Returns the number of samples per channel, below 0 after a failure.
    int convert(const AVFrame* frame) {
        const MediaFunctions& ffmpeg = *media_functions();
        const int given = frame != nullptr ? frame->nb_samples : 0;
        const int most = ffmpeg.swr_get_out_samples(resampler_.get(), given);
        if (most < 0)
            return most;
        samples_.resize(static_cast<std::size_t>(most) * static_cast<std::size_t>(channels_ * sample_size) + 1);
        std::uint8_t* out = samples_.data();
        const auto** in = frame != nullptr ? const_cast<const std::uint8_t**>(frame->extended_data) : nullptr;
        return ffmpeg.swr_convert(resampler_.get(), &out, most, in, given);
    }
    const std::uint8_t* samples() const { return samples_.data(); }

private:
    std::unique_ptr<SwrContext, MediaDeleter> resampler_;
    std::vector<std::uint8_t> samples_;
    int channels_;
};

bool same_form(const AVFrame& frame, const AVFrame& other) {
    return frame.format == other.format && frame.sample_rate == other.sample_rate &&
           frame.ch_layout.nb_channels == other.ch_layout.nb_channels;
}

/// Converts all frames from the first on; empty, or the reason of a failure.
std::string write_sound(Media& media, NewFile& file, Conversion& done, const Progress& progress) {
    const AVFrame* frame = media.next_frame();
    if (frame == nullptr || frame->nb_samples == 0)
        return media.fault().empty() ? "has no sound" : media.fault();
    const int rate =
        frame->sample_rate >= lowest_rate && frame->sample_rate <= highest_rate ? frame->sample_rate : usual_rate;
    const int channels = std::min(frame->ch_layout.nb_channels, 2);
    Resampler resampler(*frame, rate, channels);
    WavWriter writer(file, rate, channels);
    AVFrame form{};
    form.format = frame->format;
    form.sample_rate = frame->sample_rate;
    form.ch_layout.nb_channels = frame->ch_layout.nb_channels;
    if (!resampler.usable())
        return "has channels of a kind that cannot be converted";
    if (!writer.write_header())
        return file.reason();
    for (; frame != nullptr; frame = media.next_frame()) {
        if (interrupted())
            return "was interrupted";
        if (!same_form(*frame, form))
            return "changes its sample rate or channels";
        const int count = resampler.convert(frame);
        if (count < 0)
            return "cannot be converted";
        if (!writer.write(resampler.samples(), count))
            return file.reason();
        if (writer.size() > size_limit)
            return "is too long for a WAV file";
        progress(media.share_done(*frame));
    }
    if (!media.fault().empty())
        return media.fault();
    if (const int rest = resampler.convert(nullptr); rest > 0 && !writer.write(resampler.samples(), rest))
        return file.reason();
    if (!writer.write_header() || !file.flush())
        return file.reason();
    done.what = format_text("%.1f s of %d Hz, %s", writer.seconds(), rate, channels == 1 ? "mono" : "stereo");
    return {};
}

} // namespace

Conversion convert_sound(const std::string& source, const std::string& target, bool loop, const Progress& progress) {
    Conversion done;
    const auto media = Media::open(source, done.fault);
    if (!media || !media->choose(AVMEDIA_TYPE_AUDIO, done.fault))
        return done;
    if (is_cut(source)) { // FFmpeg accepts truncated files
        done.fault = "is truncated";
        return done;
    }
    NewFile file(target);
    done.fault = file.stream() ? write_sound(*media, file, done, progress) : file.reason();
    if (done.fault.empty() && loop) {
        done.fault = loop_fault(file.temporary_name());
        done.seam = !done.fault.empty();
    }
    if (done.fault.empty() && !interrupted() && !file.commit())
        done.fault = file.reason();
    return done;
}

} // namespace vcc::kit
