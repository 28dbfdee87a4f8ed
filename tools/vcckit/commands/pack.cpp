// The commands pack and unpack: screen sources to slot and toggle files, and back.
#include "vcckit/commands/commands.h"

#include "vcckit/check/installation.h"
#include "vcckit/check/source_check.h"
#include "vcckit/faults/silence.h"
#include "vcckit/files/new_file.h"
#include "vcckit/files/watch.h"
#include "vcckit/source/packed_screen.h"
#include "vcckit/source/unpack.h"

#include "core/files.h"
#include "platform/files.h"
#include "platform/latin1.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <span>

#include <unistd.h>

namespace vcc::kit {

namespace {

namespace fs = std::filesystem;

struct Source {
    std::string file, text;
    SourceCheck checked{};
};

/// Checks all sources with the fonts of the installation.
void check_all(std::vector<Source>& sources, const PackRequest& request, std::set<FaultCode> ignored) {
    const platform::FolderVisit visit(request.installation);
    const Library library;
    const SourceRules rules{request.any_name, load_measuring_fonts(), std::move(ignored)};
    for (Source& source : sources)
        source.checked = check_source(source.file, source.text, rules);
}

void tell(const std::vector<Source>& sources, const Faults& all) {
    const bool colours = wants_colours(stderr);
    for (const Source& source : sources)
        for (const Fault& fault : source.checked.faults)
            std::fprintf(stderr, "%s\n%s", text_of_fault(fault, colours).c_str(),
                         excerpt_of_fault(fault, source.text, colours).c_str());
    std::fprintf(stderr, "%s; nothing is written. \"vcckit explain CODE\" tells more.\n", sum_of(all).c_str());
}

/// Reports sources for the same screen; true if there are none.
bool makes_each_screen_once(const std::vector<Source>& sources) {
    for (std::size_t i = 0; i < sources.size(); ++i)
        for (const Source& before : std::span(sources).first(i))
            if (const Screen& one = sources[i].checked.screen, &other = before.checked.screen;
                platform::same_but_for_case(one.name, other.name) &&
                (!one.language || !other.language || one.language == other.language)) {
                complain(sources[i].file + ": makes the same screen as " + before.file);
                return false;
            }
    return true;
}

int pack_once(const PackRequest& request, const std::set<FaultCode>& ignored) {
    std::vector<Source> sources;
    for (const std::string& file : request.sources) {
        auto text = read_file(file);
        if (!text)
            return complain(file + " " + text.reason());
        sources.push_back({file, std::move(*text)});
    }
    if (!is_installation(request.installation))
        return complain(
            request.installation +
            (fs::exists(platform::system_path(request.installation)) ? " is not an installation" : " does not exist") +
            ": it has no tools/language.ini, tools/vcc.buf or data/configs/vcc.cfg");
    check_all(sources, request, ignored);
    if (!makes_each_screen_once(sources))
        return exit_unusable;
    Faults faults;
    for (const Source& source : sources)
        std::ranges::copy(source.checked.faults, std::back_inserter(faults));
    const InterruptionGuard guard; // removes files that are not yet in place
    FileSet files;
    std::vector<std::string> written;
    std::string reason;
    for (const Source& source : sources)
        if (faults.empty() && reason.empty())
            reason = write_packed_screen(source.checked.screen, request.installation, files, written);
    if (interrupted())
        return exit_unusable;
    if (reason.empty() && faults.empty())
        reason = files.commit();
    if (!reason.empty())
        return complain(reason);
    if (request.json)
        std::fputs(json_of_faults(faults, "installation", request.installation, written).c_str(), stdout);
    else if (!faults.empty())
        tell(sources, faults);
    for (const std::string& name : written)
        if (!request.json && !request.quiet)
            std::printf("wrote %s\n", platform::name_of(platform::system_path(request.installation) / name).c_str());
    return faults.empty() ? exit_clean : exit_faults;
}

/// The source of a screen in a folder "screens" within or beside its installation; empty without one.
std::string source_beside(const fs::path& installation, const std::string& name) {
    for (const char* folder : {"screens", "../screens"})
        if (const auto text =
                read_file(platform::name_of((installation / folder / (name + ".toml")).lexically_normal())))
            return *text;
    return {};
}

/// The fonts for the source, which may align texts.
bool describes_with_fonts(const std::string& source, const Screen& screen, const fs::path& installation) {
    const platform::FolderVisit visit(platform::name_of(installation.lexically_normal()));
    const Library library;
    return describes(source, screen, measure_of_fonts(load_measuring_fonts()));
}

/// The language that the name of a slot file begins with.
std::optional<std::size_t> language_of(const std::string& slot_file) {
    const std::string name = platform::name_of(platform::system_path(slot_file).filename());
    for (std::size_t i = 0; i < languages.size(); ++i)
        if (platform::same_but_for_case(name.substr(0, languages[i].prefix.size()), languages[i].prefix))
            return i;
    return std::nullopt;
}

/// Empty if a source cannot describe it.
std::string screen_name(const std::string& slot_file) {
    std::string name = platform::name_of(platform::system_path(slot_file).stem());
    if (const auto language = language_of(slot_file))
        name.erase(0, languages[*language].prefix.size());
    return is_screen_name(name) ? name : "";
}

/// Whether the output is one of the inputs.
bool is_unpacked(const std::string& output, const std::vector<std::string>& files) {
    std::error_code error; // a missing file is not an input
    return std::ranges::any_of(files, [&](const std::string& file) {
        const fs::path slots = platform::system_path(file), written = platform::system_path(output);
        return fs::equivalent(written, slots, error) ||
               fs::equivalent(written, fs::path(slots).replace_extension(".tgl"), error);
    });
}

/// The files in the order of the languages; a file whose name says none counts as it is given.
std::string sort_by_language(std::vector<std::string>& files) {
    if (files.size() < 2 || !language_of(files[0]) || !language_of(files[1]))
        return {};
    if (language_of(files[0]) == language_of(files[1]))
        return files[0] + " and " + files[1] + ": are of the same language";
    std::ranges::sort(files, {}, language_of);
    return {};
}

} // namespace

int run_pack(const PackRequest& request) {
    const auto ignored = codes_of(request.ignored);
    if (!ignored)
        return complain(ignored.reason());
    return run_work(request.watch, request.sources, [&] { return pack_once(request, *ignored); });
}

int run_unpack(std::vector<std::string> files, const std::string& output, bool force) {
    if (std::string fault = sort_by_language(files); !fault.empty())
        return complain(fault);
    if (is_unpacked(output, files))
        return complain(output + ": would be replaced by its own source: give another name with -o");
    Screen screen;
    screen.name = screen_name(files.front());
    if (files.size() == 1)
        screen.language = language_of(files.front());
    for (std::size_t i = 0; i < languages.size(); ++i) {
        auto records = read_packed_records(files[std::min(i, files.size() - 1)]);
        if (!records)
            return complain(records.reason());
        screen.records[i] = std::move(*records);
    }
    if (const std::string difference = difference_of_structure(screen); !difference.empty())
        return complain(difference + ": unpack each file by itself");
    const fs::path installation = fs::absolute(platform::system_path(files.front())).parent_path() / "../../..";
    std::string source = source_beside(installation, screen.name); // keeps names and comments
    if (source.empty() || !describes_with_fonts(source, screen, installation))
        source = write_screen_source(screen);
    if (output.empty() || output == "-")
        return std::fwrite(source.data(), 1, source.size(), stdout) == source.size() ? exit_clean : exit_unusable;
    if (!force && platform::file_exists(output) && read_file(output).value_or("") != source)
        return complain(output + ": exists, and says something else: --force replaces it");
    return exit_of(write_whole_file(output, source));
}

} // namespace vcc::kit
