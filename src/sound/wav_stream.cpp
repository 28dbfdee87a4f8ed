#include "sound/wav_stream.h"

#include "core/alert.h"
#include "core/log.h"
#include "platform/files.h"
#include "sound/sound.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace vcc {

namespace {

constexpr int music_priority = 255; // many effects at once must not take the music's voice
constexpr int stream_halves = 2;

} // namespace

std::unique_ptr<WavStream> WavStream::open(const std::string& path, int volume) {
    const WavHeader header = parse_wav_header(path);
    if (header.data_offset == 0) {
        alert_and_log("Error (1) detecting wav stream",
                      format_text("Error (1) detecting wav stream\n%s\n", allegro_error));
        return nullptr;
    }
    FilePtr file(platform::open_file(platform::resolve_path(path), "rb"));
    if (!file) {
        alert_and_log("Error (2) detecting wav stream", format_text("Error (2) opening wav stream %d\n", errno));
        return nullptr;
    }
    // Reads of half a megabyte go directly into the stream's buffer.
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    AudioStreamPtr stream(play_audio_stream(stream_samples, header.bits, header.channels == 2 ? TRUE : FALSE,
                                            header.rate, std::clamp(volume, 0, 255), centre_pan));
    if (!stream) {
        alert_and_log("Error init audiostream :", format_text("Error init audiostream : %s\n", allegro_error));
        return nullptr;
    }
    voice_set_priority(stream->voice, music_priority);
    return std::unique_ptr<WavStream>(new WavStream(header, std::move(file), std::move(stream)));
}

WavStream::Refill WavStream::refill(bool loop_all) {
    auto* const memory = static_cast<unsigned char*>(get_audio_stream_buffer(stream_.get()));
    if (memory == nullptr)
        return Refill::no_buffer;
    // The library asks for a buffer when the other half begins to play, so the half that is active while a buffer is
    // filled precedes it. When the marked half is active again, the buffer with the last data has been played.
    if (last_half_ == stream_->active)
        return Refill::finished;
    const std::span buffer(memory, static_cast<std::size_t>(stream_samples * header_.frame_bytes()));
    fill(buffer, loop_all);
    fade_in(buffer, header_.bits, header_.frame_bytes(), header_.rate * std::exchange(fade_in_ms_, 0) / 1000);
    if (header_.bits == 16)
        flip_sign_bits(buffer);
    free_audio_stream_buffer(stream_.get());
    return Refill::filled;
}

/// Fills a buffer with what follows of the theme, and after its end with silence (`loop_all`) or the theme again.
void WavStream::fill(std::span<unsigned char> buffer, bool loop_all) {
    const auto length = static_cast<std::size_t>(header_.data_length);
    const std::size_t tail = std::min(buffer.size(), length - position_);
    read_at(position_, buffer.first(tail));
    position_ += tail;
    if (position_ < length)
        return;
    const auto rest = buffer.subspan(tail);
    if (loop_all && !last_half_)
        last_half_ = stream_->active;
    if (last_half_ || length == 0) {
        std::ranges::fill(rest, silent_byte(header_.bits));
        return;
    }
    read_at(0, rest.first(std::min(rest.size(), length)));
    for (std::size_t at = tail + length; at < buffer.size(); ++at)
        buffer[at] = buffer[at - length];
    position_ = rest.size() % length;
}

/// Fills up with silence if the file has been truncated since it was opened.
void WavStream::read_at(std::size_t position, std::span<unsigned char> target) {
    const bool placed = std::fseek(file_.get(), header_.data_offset + static_cast<long>(position), SEEK_SET) == 0;
    const std::size_t count = placed ? std::fread(target.data(), 1, target.size(), file_.get()) : 0;
    std::ranges::fill(target.subspan(count), silent_byte(header_.bits));
}

void WavStream::prime(bool loop_all, int fade_in_ms) {
    fade_in_ms_ = fade_in_ms;
    pause();
    for (int half = 0; half < stream_halves; ++half) {
        refill(loop_all);
        pause(); // the library starts a stopped voice when it gets a buffer back
    }
    voice_set_position(stream_->voice, 0);
}

void WavStream::set_volume(int volume) {
    voice_set_volume(stream_->voice, std::clamp(volume, 0, 255));
    voice_set_playmode(stream_->voice, PLAYMODE_LOOP);
}

void WavStream::pause() {
    voice_stop(stream_->voice);
    paused_ = true;
}

void WavStream::resume() {
    voice_start(stream_->voice);
    paused_ = false;
}

} // namespace vcc
