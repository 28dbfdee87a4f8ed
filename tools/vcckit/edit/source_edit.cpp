#include "edit/source_edit.h"

namespace vcc::kit::edit {

Result<std::string> apply(const std::string& source, DocumentKind, std::span<const Operation> operations,
                          const EditRules&) {
    if (operations.size() > operation_limit)
        return Failure{"more than " + std::to_string(operation_limit) + " operations"};
    std::string text = source;
    for (const Operation& operation : operations) {
        if (operation.what != Operation::Do::replace_text)
            return Failure{"this operation is not there yet"};
        text = operation.text;
    }
    return text;
}

std::string label_of(std::span<const Operation> operations) {
    return operations.empty() ? "Change nothing" : "Change text";
}

} // namespace vcc::kit::edit
