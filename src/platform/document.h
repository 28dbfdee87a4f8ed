// Opening a document with the desktop's associated program.
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

/// Opens the file with its associated program. A viewer that stays open is not waited for: after at most 1500 ms
/// without an exit status the call counts as success. Never blocks longer than that.
int open_document(const std::string& path);

} // namespace vcc::platform
