// The functions of the film libraries, looked up when the first film opens. Linked, they would pull in some 140 other
// libraries and take most of the time between start and menu.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

// Library (by its member name) and function: everything that avi_ffmpeg.cpp calls.
#define VELDOR_FFMPEG_FUNCTIONS(row)                                                                                   \
    row(util, av_dict_free);                                                                                           \
    row(util, av_dict_set);                                                                                            \
    row(util, av_frame_alloc);                                                                                         \
    row(util, av_frame_free);                                                                                          \
    row(util, av_log_set_level);                                                                                       \
    row(codec, av_packet_alloc);                                                                                       \
    row(codec, av_packet_free);                                                                                        \
    row(codec, av_packet_unref);                                                                                       \
    row(codec, avcodec_alloc_context3);                                                                                \
    row(codec, avcodec_find_decoder);                                                                                  \
    row(codec, avcodec_free_context);                                                                                  \
    row(codec, avcodec_open2);                                                                                         \
    row(codec, avcodec_parameters_to_context);                                                                         \
    row(codec, avcodec_receive_frame);                                                                                 \
    row(codec, avcodec_send_packet);                                                                                   \
    row(format, av_find_input_format);                                                                                 \
    row(format, av_read_frame);                                                                                        \
    row(format, avformat_alloc_context);                                                                               \
    row(format, avformat_close_input);                                                                                 \
    row(format, avformat_index_get_entries_count);                                                                     \
    row(format, avformat_open_input);                                                                                  \
    row(scale, sws_freeContext);                                                                                       \
    row(scale, sws_getCachedContext);                                                                                  \
    row(scale, sws_scale)

namespace vcc::platform {

struct FfmpegFunctions {
// A declared name cannot be put in parentheses.
#define VELDOR_DECLARE(library, function) decltype(&::function) function = nullptr // NOLINT(bugprone-macro-parentheses)
    VELDOR_FFMPEG_FUNCTIONS(VELDOR_DECLARE);
#undef VELDOR_DECLARE
};

/// The functions, or null if a library or a function is missing. The first call loads the libraries, which takes about
/// a tenth of a second; they and the functions stay until unload_ffmpeg().
const FfmpegFunctions* ffmpeg_functions();

/// Gives back the memory of the libraries (13 MiB). The next call of ffmpeg_functions() loads them again.
void unload_ffmpeg();

} // namespace vcc::platform
