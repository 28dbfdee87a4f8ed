#pragma once

#include "core/handles.h"

#include <string>

namespace vcc {

inline BitmapPtr pointer_picture; ///< empty: the library's own pointer is in use

/// Loads the picture `directory` + `file` and makes it the pointer, with its hot spot at (6, 1). False if it cannot be
/// loaded; the pointer is then unchanged.
bool load_mouse_pointer(const std::string& directory, const std::string& file);

/// Installs the mouse and loads images/pointer.pcx; if that fails, shows and logs it and uses the library's pointer.
void install_mouse_and_pointer();

/// Returns to the library's own pointer and destroys the picture. Call before the library is shut down.
void release_pointer();

} // namespace vcc
