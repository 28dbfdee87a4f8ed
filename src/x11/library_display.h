// What the library's own windows lack on a desktop.
#pragma once

namespace vcc::platform {

/// Call after the library's start and before the first mode is set, if the picture is not scaled.
void tend_library_windows();

} // namespace vcc::platform
