// The library's own windows: what they lack on a desktop.
#pragma once

namespace vcc::platform {

/// Tends the library's windows if the picture is not scaled. Call before the first mode is set, with the display's
/// lock.
void tend_library_windows();

/// Keeps the library's drivers from ending the program on a display server that offers shared memory but refuses it;
/// they send their pictures to the server instead. Call as above.
void guard_library_drivers();

} // namespace vcc::platform
