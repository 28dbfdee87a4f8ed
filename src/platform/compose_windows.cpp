#include "platform/compose.h"

namespace vcc::platform {

// The system puts accents together by itself.
ComposeList::ComposeList(const std::string&) {}
ComposeList::~ComposeList() = default;

} // namespace vcc::platform
