// Opens documents with their associated programs.
#pragma once

#include <string>

namespace vcc::platform {

/// Result numbers of open_document(); a number above 32 is success.
inline constexpr int document_no_memory = 0;
inline constexpr int document_file_not_found = 2;
inline constexpr int document_path_not_found = 3;
inline constexpr int document_access_denied = 5;
inline constexpr int document_no_association = 31;
inline constexpr int document_opened = 42;

/// Opens a file with its associated program. Waits at most 1500 ms for its exit status; a viewer that is still open
/// then counts as success.
int open_document(const std::string& path);

} // namespace vcc::platform
