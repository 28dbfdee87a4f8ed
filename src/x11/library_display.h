// The library's own windows: what they lack on a desktop.
#pragma once

namespace vcc::platform {

/// Tends the library's windows if the picture is not scaled. A display server that offers shared memory but refuses it
/// does not end the program; the pictures are sent to it instead. Call before the first mode is set, with the display's
/// lock.
void tend_library_windows();

} // namespace vcc::platform
