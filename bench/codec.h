// The decoding library itself, called as directly as it can be.
#pragma once

#include <string>

struct AVFormatContext;
struct AVCodecContext;
struct AVPacket;
struct AVFrame;

namespace vcc::bench {

/// Decodes the first video stream of a film frame by frame, over and over, in one thread.
class BareCodec {
public:
    explicit BareCodec(const std::string& path);
    ~BareCodec();
    BareCodec(const BareCodec&) = delete;
    BareCodec& operator=(const BareCodec&) = delete;

    bool ready() const { return codec_ != nullptr; }
    void decode_next();

private:
    AVFormatContext* container_ = nullptr;
    AVCodecContext* codec_ = nullptr;
    AVPacket* packet_ = nullptr;
    AVFrame* frame_ = nullptr;
    int stream_ = -1;
};

} // namespace vcc::bench
