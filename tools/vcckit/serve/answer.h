// What a request gets.
#pragma once

#include "vcckit/edit/operation.h"

#include <map>
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

} // namespace vcc::kit::edit
