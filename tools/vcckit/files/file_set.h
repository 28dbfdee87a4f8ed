// Writes several files together: all of them, or none.
#pragma once

#include "vcckit/files/new_file.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// Writes files beside their places and then moves all of them into place. Without commit() no trace remains. A name
/// that exists in other letter case means that file.
class FileSet {
public:
    /// Writes a file beside its place and creates its folder. Returns the reason of a failure, else an empty text.
    std::string write(const std::string& name, std::string_view bytes);

    /// Marks a file, which need not exist, for removal by commit().
    void remove(const std::string& name);

    /// Moves all files into place. Returns the reason of a failure; the files before it are then in place. Requests to
    /// end the process wait until then.
    std::string commit();

private:
    std::vector<std::unique_ptr<NewFile>> files_;
    std::vector<std::string> removed_;
};

/// Writes a single file; returns the reason of a failure.
std::string write_whole_file(const std::string& name, std::string_view bytes);

} // namespace vcc::kit
