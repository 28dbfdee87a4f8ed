#pragma once

#include "core/handles.h"

#include <string_view>

namespace vcc {

inline BitmapPtr pointer_picture; ///< empty: the library's own pointer is in use

/// Makes images/pointer.pcx the pointer, with its hot spot at (6, 1). If it cannot be loaded, shows and logs that;
/// the pointer stays as it was.
void load_mouse_pointer(std::string_view shown_failure, std::string_view logged_failure);

/// Installs the mouse and loads the pointer.
void install_mouse_and_pointer();

/// Returns to the library's own pointer and destroys the picture. Call before the library is shut down.
void release_pointer();

} // namespace vcc
