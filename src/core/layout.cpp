#include "core/layout.h"

#include "core/installation.h"

namespace vcc {

int layout_width = picture_width;
int layout_height = picture_height;

} // namespace vcc
