#include "vcckit/play/virtual_desktop.h"

namespace vcc::kit {

std::unique_ptr<VirtualDesktop> VirtualDesktop::open(std::string& fault) {
    fault = "this system has no virtual display";
    return nullptr;
}

} // namespace vcc::kit
