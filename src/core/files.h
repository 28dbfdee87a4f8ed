#pragma once

#include "core/result.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vcc {

inline constexpr std::size_t text_file_limit = 4u << 20; ///< bytes; far above any text file of an installation

inline constexpr std::string_view missing_file = "does not exist"; ///< the reason if there is nothing of that name

/// The bytes of a file of the installation (looked up as platform::resolve_path does). Fails when it does not exist,
/// cannot be read or is larger than `size_limit` bytes.
Result<std::string> read_file(std::string_view name, std::size_t size_limit = text_file_limit);

} // namespace vcc
