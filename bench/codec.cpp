#include "codec.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace vcc::bench {

BareCodec::BareCodec(const std::string& path) : packet_(av_packet_alloc()), frame_(av_frame_alloc()) {
    if (avformat_open_input(&container_, path.c_str(), nullptr, nullptr) != 0)
        return;
    const AVCodec* decoder = nullptr;
    stream_ = av_find_best_stream(container_, AVMEDIA_TYPE_VIDEO, -1, -1, &decoder, 0);
    if (stream_ < 0)
        return;
    codec_ = avcodec_alloc_context3(decoder);
    codec_->thread_count = 1;
    avcodec_parameters_to_context(codec_, container_->streams[stream_]->codecpar);
    if (avcodec_open2(codec_, decoder, nullptr) != 0)
        avcodec_free_context(&codec_);
}

BareCodec::~BareCodec() {
    avcodec_free_context(&codec_);
    avformat_close_input(&container_);
    av_packet_free(&packet_);
    av_frame_free(&frame_);
}

void BareCodec::decode_next() {
    while (avcodec_receive_frame(codec_, frame_) != 0) {
        if (av_read_frame(container_, packet_) != 0) {
            av_seek_frame(container_, stream_, 0, AVSEEK_FLAG_BACKWARD);
            avcodec_flush_buffers(codec_);
            continue;
        }
        if (packet_->stream_index == stream_)
            avcodec_send_packet(codec_, packet_);
        av_packet_unref(packet_);
    }
}

} // namespace vcc::bench
