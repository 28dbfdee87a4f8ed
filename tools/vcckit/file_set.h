// Files that are written together: all of them, or none.
#pragma once

#include "new_file.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// Collects what is to be written beside its place, and puts everything in place at once. What is not committed leaves
/// no trace. A name that exists in other letter case means that file.
class FileSet {
public:
    /// Writes a file beside its place, making its folder. The reason when that failed, else an empty text.
    std::string write(const std::string& name, std::string_view bytes);

    /// Marks a file that may or may not be there; commit() removes it.
    void remove(const std::string& name);

    /// Puts all files in place. The reason when one could not be; those before it are then in place. A request to end
    /// the process waits until all is done.
    std::string commit();

private:
    std::vector<std::unique_ptr<NewFile>> files_;
    std::vector<std::string> removed_;
};

/// One file by itself; the reason when it could not be written.
std::string write_whole_file(const std::string& name, std::string_view bytes);

} // namespace vcc::kit
