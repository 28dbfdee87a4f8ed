// Checks PCX pictures.
#pragma once

#include "core/handles.h"
#include "vcckit/faults/fault_codes.h"

#include <string>
#include <string_view>

namespace vcc::kit {

struct PictureCheck {
    BitmapPtr bitmap;                               ///< as the program loads it; null if it refuses it
    std::string fault;                              ///< empty without a fault
    FaultCode code = FaultCode::picture_unreadable; ///< of the fault
    std::string advice = "vcckit convert makes a PCX picture of 8 or 24 bits";
    std::string nearest{}; ///< of a missing file: one that may be meant
};

PictureCheck check_picture(const std::string& path);

/// True if the run-length data contain all lines that the header announces. Pure.
bool pcx_is_complete(std::string_view bytes);

} // namespace vcc::kit
