// What the desktop's own programs do: open documents, show messages.
#pragma once

#include <string>

namespace vcc::platform {

/// Result numbers of open_document(); a number above 32 is success.
inline constexpr int document_no_memory = 0, document_file_not_found = 2, document_path_not_found = 3,
                     document_access_denied = 5, document_no_association = 31, document_opened = 42;

/// Opens a file with its associated program. Waits at most 1500 ms for its exit status; a viewer that is still open
/// then counts as success.
int open_document(const std::string& path);

/// Shows a message until it is confirmed, if the graphics library cannot: on X11 that needs xmessage, which many
/// desktops lack. False if the library can, or if there is nothing else either.
bool show_message(const std::string& text);

} // namespace vcc::platform
