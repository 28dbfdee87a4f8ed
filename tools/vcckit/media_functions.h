// The FFmpeg functions for converting, looked up with the first file: linked as usual, the libraries would take longer
// to load than most commands run.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

// Library (by its name here) and function.
#define VELDOR_MEDIA_FUNCTIONS(row)                                                                                    \
    row(util, av_channel_layout_default);                                                                              \
    row(util, av_dict_free);                                                                                           \
    row(util, av_dict_set);                                                                                            \
    row(util, av_frame_alloc);                                                                                         \
    row(util, av_frame_free);                                                                                          \
    row(util, av_frame_get_buffer);                                                                                    \
    row(util, av_frame_make_writable);                                                                                 \
    row(util, av_free);                                                                                                \
    row(util, av_log_set_level);                                                                                       \
    row(util, av_malloc);                                                                                              \
    row(codec, av_packet_alloc);                                                                                       \
    row(codec, av_packet_free);                                                                                        \
    row(codec, av_packet_rescale_ts);                                                                                  \
    row(codec, av_packet_unref);                                                                                       \
    row(codec, avcodec_alloc_context3);                                                                                \
    row(codec, avcodec_find_decoder);                                                                                  \
    row(codec, avcodec_find_encoder);                                                                                  \
    row(codec, avcodec_free_context);                                                                                  \
    row(codec, avcodec_open2);                                                                                         \
    row(codec, avcodec_parameters_from_context);                                                                       \
    row(codec, avcodec_parameters_to_context);                                                                         \
    row(codec, avcodec_receive_frame);                                                                                 \
    row(codec, avcodec_receive_packet);                                                                                \
    row(codec, avcodec_send_frame);                                                                                    \
    row(codec, avcodec_send_packet);                                                                                   \
    row(format, av_find_best_stream);                                                                                  \
    row(format, av_guess_format);                                                                                      \
    row(format, av_guess_frame_rate);                                                                                  \
    row(format, av_guess_sample_aspect_ratio);                                                                         \
    row(format, av_interleaved_write_frame);                                                                           \
    row(format, av_read_frame);                                                                                        \
    row(format, av_write_trailer);                                                                                     \
    row(format, avformat_alloc_context);                                                                               \
    row(format, avformat_close_input);                                                                                 \
    row(format, avformat_find_stream_info);                                                                            \
    row(format, avformat_free_context);                                                                                \
    row(format, avformat_new_stream);                                                                                  \
    row(format, avformat_open_input);                                                                                  \
    row(format, avformat_write_header);                                                                                \
    row(format, avio_alloc_context);                                                                                   \
    row(format, avio_context_free);                                                                                    \
    row(format, avio_flush);                                                                                           \
    row(resample, swr_alloc_set_opts2);                                                                                \
    row(resample, swr_convert);                                                                                        \
    row(resample, swr_free);                                                                                           \
    row(resample, swr_get_out_samples);                                                                                \
    row(resample, swr_init);                                                                                           \
    row(scale, sws_freeContext);                                                                                       \
    row(scale, sws_getCachedContext);                                                                                  \
    row(scale, sws_scale)

namespace vcc::kit {

struct MediaFunctions {
// A name that is declared cannot stand in parentheses.
#define VELDOR_DECLARE(library, function) decltype(&::function) function = nullptr // NOLINT(bugprone-macro-parentheses)
    VELDOR_MEDIA_FUNCTIONS(VELDOR_DECLARE);
#undef VELDOR_DECLARE
};

/// The functions, or null if a library or a function is missing. The libraries stay loaded.
const MediaFunctions* media_functions();

// Owners of the libraries' objects, usable after media_functions() has succeeded.
struct MediaDeleter {
    void operator()(AVFormatContext* input) const noexcept { media_functions()->avformat_close_input(&input); }
    void operator()(AVCodecContext* codec) const noexcept { media_functions()->avcodec_free_context(&codec); }
    void operator()(AVFrame* frame) const noexcept { media_functions()->av_frame_free(&frame); }
    void operator()(AVPacket* packet) const noexcept { media_functions()->av_packet_free(&packet); }
    void operator()(SwsContext* scaler) const noexcept { media_functions()->sws_freeContext(scaler); }
    void operator()(SwrContext* resampler) const noexcept { media_functions()->swr_free(&resampler); }
};

} // namespace vcc::kit
