// Requests as they arrive, and what they get.
#pragma once

#include "vcckit/edit/operation.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace vcc::kit::edit {

namespace status {
inline constexpr int done = 200, bad_request = 400, forbidden = 403, not_found = 404, wrong_method = 405,
                     out_of_date = 409, too_large = 413, wrong_type = 415, refused = 422;
}

struct Answer {
    int status = status::done;
    std::string type = "application/json; charset=utf-8", body;
    std::map<std::string, std::string> headers{};
};

/// {"error": reason}
Answer refusal(int status, const std::string& reason);

/// Why a request is not even tried: thrown by what finds it out. Other refusals have the status `refused`.
struct BadRequest : Refused {
    explicit BadRequest(const std::string& reason, int with = status::bad_request) : Refused(reason), status(with) {}
    int status;
};

/// The request of an edit. Every word and number is checked: throws BadRequest. Pure.
EditRequest edit_request_of(const nlohmann::json& json);

/// An entry that is a text; nothing when it is none, or longer than a source may be.
std::optional<std::string> text_entry(const nlohmann::json& json, const char* name);

/// An entry that is a whole number within bounds.
std::optional<std::int64_t> number_entry(const nlohmann::json& json, const char* name, std::int64_t least,
                                         std::int64_t most);

/// The number of a language in vcc::languages; throws BadRequest.
std::size_t language_of(const std::string& code);

} // namespace vcc::kit::edit
