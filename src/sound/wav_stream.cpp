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

// The library asks for a buffer when the other half begins to play, so the half that is active while a buffer is filled
// precedes it. When the marked half is active again, the buffer with the last data has been played.
RefillPlan plan_refill(const RefillState& state, long data_length, long buffer_size, bool loop_all, int active_half) {
    RefillPlan plan;
    plan.next = state;
    if (state.end_mark != 0) {
        plan.silence = buffer_size;
        plan.finished = state.end_mark == active_half + 1;
        return plan;
    }
    plan.tail_from = state.position;
    const long left = data_length - state.position;
    if (buffer_size < left) {
        plan.tail = buffer_size;
        plan.next.position += buffer_size;
        return plan;
    }
    plan.tail = left;
    const long rest = buffer_size - left;
    if (loop_all) {
        plan.silence = rest;
        plan.next = {0, active_half + 1};
    } else if (data_length == 0) {
        plan.silence = rest;
    } else {
        plan.wrap = std::min(rest, data_length);
        plan.repeat = rest - plan.wrap;
        plan.next.position = rest % data_length;
    }
    return plan;
}

std::unique_ptr<WavStream> WavStream::open(const std::string& path, int volume) {
    const WavHeader header = parse_wav_header(path);
    if (header.data_offset == 0) {
        alert_and_log("Error (1) detecting wav stream",
                      format_text("Error (1) detecting wav stream\n%s\n", allegro_error));
        return nullptr;
    }
    FilePtr file(std::fopen(platform::resolve_path(path).c_str(), "rb"));
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
    void* const memory = get_audio_stream_buffer(stream_.get());
    if (memory == nullptr)
        return Refill::no_buffer;
    const long size = long{stream_samples} * header_.frame_bytes();
    const RefillPlan plan = plan_refill(state_, header_.data_length, size, loop_all, stream_->active);
    state_ = plan.next;
    if (plan.finished)
        return Refill::finished;
    fill(plan, {static_cast<unsigned char*>(memory), static_cast<std::size_t>(size)});
    free_audio_stream_buffer(stream_.get());
    return Refill::filled;
}

void WavStream::fill(const RefillPlan& plan, std::span<unsigned char> buffer) {
    const auto tail = static_cast<std::size_t>(plan.tail);
    const auto wrap = static_cast<std::size_t>(plan.wrap);
    const auto repeat = static_cast<std::size_t>(plan.repeat);
    read_at(plan.tail_from, buffer.first(tail));
    read_at(0, buffer.subspan(tail, wrap));
    const auto period = static_cast<std::size_t>(header_.data_length);
    for (std::size_t at = tail + wrap; at < tail + wrap + repeat; ++at)
        buffer[at] = buffer[at - period];
    const auto silence = buffer.subspan(tail + wrap + repeat);
    std::fill(silence.begin(), silence.end(), silent_byte(header_.bits));
    fade_in(buffer, header_.bits, header_.frame_bytes(), header_.rate * std::exchange(fade_in_ms_, 0) / 1000);
    if (header_.bits == 16)
        flip_sign_bits(buffer);
}

/// Fills up with silence if the file has been truncated since it was opened.
void WavStream::read_at(long position, std::span<unsigned char> target) {
    if (target.empty())
        return;
    const bool placed =
        position == file_position_ || std::fseek(file_.get(), header_.data_offset + position, SEEK_SET) == 0;
    const std::size_t count = placed ? std::fread(target.data(), 1, target.size(), file_.get()) : 0;
    file_position_ = position + static_cast<long>(count);
    const auto missing = target.subspan(count);
    std::fill(missing.begin(), missing.end(), silent_byte(header_.bits));
}

void WavStream::prime(bool loop_all, int fade_in_ms) {
    fade_in_ms_ = fade_in_ms;
    pause();
    for (int half = 0; half < stream_halves; ++half) {
        const Refill filled = refill(loop_all);
        pause(); // the library starts a stopped voice when it gets a buffer back
        if (filled != Refill::filled)
            break;
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
