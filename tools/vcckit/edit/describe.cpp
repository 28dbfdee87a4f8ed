#include "edit/describe.h"

namespace vcc::kit::edit {

Result<Description> describe(const std::string&, DocumentKind, const EditRules&) {
    return Failure{"sources are not described yet"};
}

} // namespace vcc::kit::edit
