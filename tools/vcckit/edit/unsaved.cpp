#include "vcckit/edit/unsaved.h"

#include "vcckit/edit/operation.h"

#include "core/handles.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace vcc::kit::edit {

using nlohmann::json;

namespace {

json conflict_json(const MergeConflict& conflict) {
    return {conflict.mine.begin, conflict.mine.end, conflict.base, conflict.theirs, conflict.removed};
}

MergeConflict conflict_of(const json& list) {
    return {{list.at(0).get<std::size_t>(), list.at(1).get<std::size_t>()}, list.at(2), list.at(3), list.at(4)};
}

json history_json(const History& history) {
    json steps = json::array();
    for (const History::Step& step : history.steps())
        steps.push_back({step.change.at, step.change.before, step.change.after, step.label,
                         step.resolved ? conflict_json(*step.resolved) : json()});
    return {{"done", history.done()}, {"steps", std::move(steps)}};
}

History history_of(const json& object) {
    std::vector<History::Step> steps;
    for (const json& each : object.at("steps"))
        steps.push_back({{each.at(0), each.at(1), each.at(2)},
                         each.at(3),
                         each.at(4).is_null() ? std::nullopt : std::optional(conflict_of(each.at(4)))});
    return {std::move(steps), object.at("done")};
}

} // namespace

std::string text_of_work(const UnsavedWork& work) {
    json documents = json::object();
    for (const auto& [name, document] : work) {
        json conflicts = json::array();
        for (const MergeConflict& conflict : document.conflicts)
            conflicts.push_back(conflict_json(conflict));
        documents[name] = {{"file", document.file},
                           {"disk", document.disk},
                           {"text", document.text},
                           {"saving", document.saving},
                           {"conflicts", std::move(conflicts)},
                           {"history", history_json(document.history)}};
    }
    return documents.dump(-1, ' ', false, json::error_handler_t::replace);
}

UnsavedWork work_of_text(std::string_view text) {
    const json documents = json::parse(text, nullptr, false);
    UnsavedWork work;
    if (!documents.is_object())
        return work;
    try {
        for (const auto& [name, each] : documents.items()) {
            UnsavedDocument document{each.at("file"), each.at("disk"), each.at("text"), each.at("saving"), {}, {}};
            for (const json& conflict : each.at("conflicts"))
                document.conflicts.push_back(conflict_of(conflict));
            document.history = history_of(each.at("history"));
            const bool fits =
                document.history.fits(document.text) &&
                std::ranges::all_of(document.conflicts, [&](const MergeConflict& conflict) {
                    return conflict.mine.begin <= conflict.mine.end && conflict.mine.end <= document.text.size();
                });
            if (fits && document.text.size() <= document_limit && document.disk.size() <= document_limit)
                work.emplace(name, std::move(document));
        }
    } catch (const json::exception&) { // written by another version, or by hand
        return {};
    }
    return work;
}

std::string state_folder(const std::string& screens) {
    const char* const state = std::getenv("XDG_STATE_HOME");
    const char* const home = std::getenv("HOME");
    std::filesystem::path folder;
    if (state && *state == '/')
        folder = state;
    else if (home && *home == '/')
        folder = std::filesystem::path(home) / ".local/state";
    else
        return {};
    std::uint64_t sum = 14695981039346656037U; // FNV-1a
    for (const char byte : screens)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    std::string name;
    for (int i = 0; i < 16; ++i, sum >>= 4U)
        name += "0123456789abcdef"[sum & 15U];
    return (folder / "veldor/edit" / name).string();
}

std::string put_quickly(const std::string& path, std::string_view bytes, unsigned mode) {
    const std::string temporary = path + ".new";
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
    const int descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, mode);
    bool good = descriptor >= 0;
    while (good && !bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        good = written > 0;
        bytes.remove_prefix(good ? static_cast<std::size_t>(written) : 0);
    }
    if (good && ::rename(temporary.c_str(), path.c_str()) != 0)
        good = false;
    const int fault = errno;
    if (descriptor >= 0)
        ::close(descriptor);
    if (good)
        return {};
    ::unlink(temporary.c_str());
    return "cannot write " + path + ": " + std::strerror(fault);
}

} // namespace vcc::kit::edit
