// The library's own drivers on a display server that offers shared memory but refuses it.
#pragma once

namespace vcc::platform {

/// Keeps the library's drivers from ending the program; they send their pictures to the server instead. Call before the
/// first mode is set, with the display's lock.
void guard_library_drivers();

} // namespace vcc::platform
