// How the process gets its memory.
#pragma once

namespace vcc::platform {

/// Lets the pictures, nearly 2 MB each, come from one heap of large pages that keeps what is freed: the system then has
/// a few pages to hand out at every start and pass instead of ten thousand. Call once, before other threads exist.
void prepare_heap();

} // namespace vcc::platform
