#include "platform/memory.h"

namespace vcc::platform {

void prepare_heap() {} // large pages need a right there that players do not have

} // namespace vcc::platform
