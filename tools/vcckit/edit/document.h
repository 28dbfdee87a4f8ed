// A document that is open: its working text, its history, and what its file held.
#pragma once

#include "vcckit/edit/history.h"
#include "vcckit/edit/merge.h"
#include "vcckit/edit/operation.h"

#include <string>
#include <vector>

namespace vcc::kit::edit {

struct Document {
    std::string name, file; ///< "vcc"; the path that is read and written
    DocumentKind kind = DocumentKind::screen;
    std::string text;                  ///< the working text, UTF-8
    std::string disk;                  ///< what the file held when it was last read or written
    bool on_disk = false;              ///< there is such a file
    bool made = false;                 ///< from installed files: its source is written with the first change
    std::vector<std::string> installs; ///< files of the installation that hold the same, as the program names them
    bool packed_files_old = false;     ///< what is made of it may be of an earlier text
    std::int64_t revision = 1;
    History history;
    std::vector<MergeConflict> conflicts; ///< in the working text

    /// Whether saving would write it.
    bool dirty() const { return text != disk || (!on_disk && !made) || packed_files_old; }
};

/// The screen that a source makes.
std::string screen_of(const Document& document);

} // namespace vcc::kit::edit
