// Unsaved work on disk, so that an end of the process at any moment loses none.
#pragma once

#include "vcckit/edit/history.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit::edit {

/// What is kept of a document that is not saved.
struct UnsavedDocument {
    std::string file;                     ///< the path that is read and written
    std::string disk;                     ///< what the file held when it was last read or written
    std::string text;                     ///< the working text, UTF-8
    bool packed_files_old = false;        ///< what is made of it may be of an earlier text; also when a save has begun
    std::vector<MergeConflict> conflicts; ///< in the working text
    History history;
};

using UnsavedWork = std::map<std::string, UnsavedDocument>; ///< by the document's name

/// A text that holds the work, and back: nothing that is not whole. Pure.
std::string text_of_work(const UnsavedWork& work);
UnsavedWork work_of_text(std::string_view text);

/// The folder for what an editor remembers of a folder of sources; empty when the user has no place for such things.
std::string state_folder(const std::string& screens);

/// Puts a file in place in one step, in that of a link, not behind it. It outlives the process, though not a loss of
/// power in the next seconds. Makes its folder. The reason of a failure, else an empty text.
std::string put_quickly(const std::string& path, std::string_view bytes, unsigned mode = 0666);

} // namespace vcc::kit::edit
