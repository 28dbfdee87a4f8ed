// PCX pictures: whether one is whole.
#pragma once

#include "core/handles.h"
#include "fault_codes.h"

#include <string>
#include <string_view>

namespace vcc::kit {

struct PictureCheck {
    BitmapPtr bitmap;                               ///< as the program would load it; null when it would refuse it
    std::string fault;                              ///< empty when nothing is wrong
    FaultCode code = FaultCode::picture_unreadable; ///< of the fault
    std::string advice = "vcckit convert makes a PCX picture of 8 or 24 bits";
};

PictureCheck check_picture(const std::string& path);

/// Why the program refuses the bytes of a picture. Pure.
std::string fault_of_picture(std::string_view bytes);

/// True when the run-length data hold every line that the header announces. Pure.
bool pcx_is_complete(std::string_view bytes);

} // namespace vcc::kit
