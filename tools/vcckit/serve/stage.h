// An installation as it would be if the working texts were saved: a temporary folder with links to its files, and the
// packed files of the working texts in their places.
#pragma once

#include "vcckit/source/screen_source.h"

#include "core/result.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace vcc::kit::edit {

class Stage {
public:
    /// Makes the folder, which is removed with the object; throws Refused. What the program writes into its log stays
    /// in there.
    explicit Stage(std::filesystem::path installation);
    ~Stage();
    /// Takes the folder of this process away, at its end.
    static void remove_own();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    const std::filesystem::path& folder() const { return folder_; }

    /// Puts the slot and toggle files of a screen in place. The reason of a failure, else an empty text.
    std::string put(const Screen& screen);

    /// Puts a file in place, named as the program names it, or takes it away. True when it has changed.
    Result<bool> put_file(const std::string& name, std::optional<std::string> bytes);

    /// Lets the links follow what was added to the installation and taken from it.
    void follow();

    /// Drops all files that are put in place.
    void begin_anew();

    /// Whether a file of the installation holds the same bytes as the one that is put in its place.
    bool is_in_step(const std::filesystem::path& file) const;

    /// What is left out because the installation is too large; empty while it is not.
    const std::string& left_out() const { return left_out_; }

private:
    void link_below(const std::filesystem::path& name, int depth);

    std::filesystem::path installation_, folder_;
    /// Files that are no links: path and bytes; those that the working texts do without have none.
    std::map<std::string, std::optional<std::string>> own_;
    std::string left_out_;
    std::size_t count_ = 0; ///< of what the folder holds
};

} // namespace vcc::kit::edit
