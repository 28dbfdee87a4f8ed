// The command play: plays an installation in the real program on a virtual desktop and saves pictures of all it shows.
#include "vcckit/check/installation.h"
#include "vcckit/commands/commands.h"
#include "vcckit/files/new_file.h"
#include "vcckit/files/temporary_folder.h"
#include "vcckit/play/visit.h"
#include "vcckit/text/lines.h"

#include "core/files.h"
#include "core/installation.h"
#include "core/log.h"
#include "platform/files.h"
#include "settings/config_text.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <span>

namespace vcc::kit {

namespace {

namespace fs = std::filesystem;

/// A temporary copy to play, because the program writes settings and logs.
class PlayedCopy {
public:
    /// Empty, or why it could not be created.
    std::string make(const fs::path& installation) {
        if (std::string fault = folder_.make(); !fault.empty())
            return fault;
        std::error_code error;
        fs::copy(installation, game(), fs::copy_options::recursive, error);
        if (error)
            return "cannot copy " + installation.string() + ": " + error.message();
        keep_own_size();
        return {};
    }
    fs::path game() const { return folder_.path() / "game"; }
    fs::path output() const { return folder_.path() / "output.txt"; }

    void choose_language(std::size_t index) const {
        std::ofstream(platform::resolve_path((game() / path::language_choice).string())) << index + 1 << '\n';
    }

private:
    /// Positions and pictures assume an unscaled screen.
    void keep_own_size() const {
        const std::string name = (game() / path::settings).string();
        const ConfigChange change{"VELDOR_GRAPHICS", "display_scale", "0"};
        if (const auto text = read_file(name)) // without settings it is unscaled
            std::ofstream(platform::resolve_path(name), std::ios::binary) << apply_changes(*text, {&change, 1});
    }

    TemporaryFolder folder_;
};

bool is_picture_of_ours(const std::string& name) {
    return name.size() > 7 && name[2] == '-' && std::isdigit(static_cast<unsigned char>(name[3])) != 0 &&
           std::isdigit(static_cast<unsigned char>(name[5])) != 0 && name[6] == '-' && name.ends_with(".png");
}

/// Removes the pictures of an earlier run from the folder. Empty, or why there is none.
std::string prepare_pictures(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder, error))
        return "cannot make the folder " + folder.string();
    for (const auto& entry : fs::directory_iterator(folder, error))
        if (is_picture_of_ours(entry.path().filename().string()))
            fs::remove(entry.path(), error);
    return {};
}

/// What the program has said, or the last lines of its log.
void tell_lines(const std::string& who, const fs::path& name) {
    constexpr std::size_t most = 5;
    const std::string text = read_file(name.string(), 64u << 20).value_or("");
    const std::vector<std::string_view> lines = lines_of(text);
    for (const std::string_view line : std::span(lines).last(std::min(lines.size(), most)))
        complain(who + std::string(line));
}

struct Journey {
    std::size_t language;
    VisitPlan plan;
    bool films; ///< starts with them
};

/// Plans for the requested languages.
Result<std::vector<Journey>> plan_journeys(const PlayRequest& request, const PlayedCopy& copy) {
    const platform::FolderVisit inside(copy.game().string());
    const Library library; // shared: a second one would not start its sound
    std::vector<Journey> journeys;
    for (std::size_t language = 0; language < languages.size(); ++language) {
        if (!request.language.empty() && request.language != languages[language].code)
            continue;
        auto plan = plan_visit(language);
        if (!plan)
            return Failure{plan.reason()};
        journeys.push_back({language, std::move(*plan), request.films && journeys.empty()});
    }
    return journeys;
}

/// One language; the exit status.
int play(const Journey& journey, const PlayedCopy& copy, const fs::path& pictures) {
    copy.choose_language(journey.language);
    const auto opened = VirtualDesktop::open();
    if (!opened)
        return complain(opened.reason());
    VirtualDesktop& desktop = **opened;
    std::string fault;
    std::vector<std::string> arguments;
    if (!journey.films)
        arguments = {"without", "films"};
    if (!desktop.start(copy.game().string(), "./vcc", arguments, copy.output().string()))
        return complain("the program does not start");
    int count = 0;
    const auto keep = [&](const std::string& name, const std::string& text, const RgbPicture& picture) {
        const std::string file =
            format_text("%s-%03d-%s.png", std::string(languages[journey.language].code).c_str(), ++count, name.c_str());
        const std::string path = (pictures / file).string();
        if (picture.width == 0) // the program has ended
            return true;
        fault = write_whole_file(path, png_bytes(picture, true));
        if (!fault.empty())
            return false;
        std::printf("%s  %s\n", path.c_str(), text.c_str());
        std::fflush(stdout);
        return true;
    };
    const Visited visited = visit(desktop, journey.plan, journey.films, keep);
    for (const std::string& each : visited.faults)
        complain(each);
    if (!fault.empty())
        complain(fault);
    if (!visited.reached_menu)
        tell_lines("the program: ", copy.output());
    if (!visited.reached_menu || !visited.faults.empty())
        tell_lines("its log: ", copy.game() / path::log);
    return !visited.reached_menu || !fault.empty() ? exit_unusable : visited.faults.empty() ? exit_clean : exit_faults;
}

} // namespace

int run_play(const PlayRequest& request) {
    const InterruptionGuard guard;
    std::error_code error;
    if (!fs::is_directory(request.folder, error))
        return complain(request.folder + " is not a folder");
    if (!fs::exists(fs::path(request.folder) / "vcc", error))
        return complain(request.folder + " has no program: put a copy of vcc there");
    const fs::path pictures = fs::absolute(request.pictures, error);
    PlayedCopy copy;
    std::string fault = copy.make(request.folder);
    if (fault.empty())
        fault = prepare_pictures(pictures);
    if (!fault.empty())
        return complain(fault);
    const auto journeys = plan_journeys(request, copy);
    if (!journeys)
        return complain(journeys.reason());
    int status = exit_clean;
    for (const Journey& journey : *journeys)
        if (!interrupted())
            status = std::max(status, play(journey, copy, fs::relative(pictures, error)));
    if (status == exit_clean && !interrupted())
        std::printf("%s: every slot visited\n", request.folder.c_str());
    return status;
}

} // namespace vcc::kit
