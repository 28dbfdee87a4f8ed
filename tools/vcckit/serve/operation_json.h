// What the page asks for, as it arrives.
#pragma once

#include "vcckit/edit/operation.h"

#include "core/result.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vcc::kit::edit {

struct EditRequest {
    std::string name;
    std::int64_t revision = 0;
    std::string label, merge_key;
    std::vector<Operation> operations;
};

/// The request of an edit; or what is wrong with it. Every word and number is checked. Pure.
Result<EditRequest> edit_request_of(const nlohmann::json& json);

/// An entry that is a text; nothing when it is none, or longer than a source may be.
std::optional<std::string> text_entry(const nlohmann::json& json, const char* name);

/// An entry that is a whole number within bounds.
std::optional<std::int64_t> number_entry(const nlohmann::json& json, const char* name, std::int64_t least,
                                         std::int64_t most);

} // namespace vcc::kit::edit
