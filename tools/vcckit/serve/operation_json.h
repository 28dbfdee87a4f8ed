// What the page asks for, as it arrives.
#pragma once

#include "vcckit/edit/operation.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace vcc::kit::edit {

/// The request of an edit. Every word and number is checked: throws BadRequest. Pure.
EditRequest edit_request_of(const nlohmann::json& json);

/// An entry that is a text; nothing when it is none, or longer than a source may be.
std::optional<std::string> text_entry(const nlohmann::json& json, const char* name);

/// An entry that is a whole number within bounds.
std::optional<std::int64_t> number_entry(const nlohmann::json& json, const char* name, std::int64_t least,
                                         std::int64_t most);

} // namespace vcc::kit::edit
