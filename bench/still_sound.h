// A sound card that plays nothing: the library's stream with a buffer always, or never, to be filled.
#pragma once

namespace vcc::bench {

/// Puts the program's music on, with theme 0 of the installation in the stream, for the life of the object.
class StillSound {
public:
    StillSound();
    ~StillSound();
    StillSound(const StillSound&) = delete;
    StillSound& operator=(const StillSound&) = delete;
};

/// From now on each call of the library's stream finds a free buffer, or none.
void offer_buffers(bool offered);

} // namespace vcc::bench
