// The mouse and the program's own pointer picture.
#pragma once

#include "core/handles.h"

#include <string>

namespace vcc {

extern BitmapPtr pointer_picture; ///< empty: the library's own pointer is in use

/// Loads the picture `directory` + `file` and makes it the pointer with its hot spot at (6, 1). False when it cannot be
/// loaded; the mouse keeps what it had.
bool load_mouse_pointer(const std::string& directory, const std::string& file);

/// Installs the mouse and loads images/pointer.pcx; a failure is shown and logged, and the program goes on without a
/// picture.
void install_mouse_and_pointer();

/// Gives the pointer back to the library and destroys the picture. Call before the library is shut down.
void release_pointer();

} // namespace vcc
