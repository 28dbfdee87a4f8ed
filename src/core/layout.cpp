#include "core/layout.h"

namespace vcc {

int layout_width = 800;
int layout_height = 600;

} // namespace vcc
