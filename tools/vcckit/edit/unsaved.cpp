#include "vcckit/edit/unsaved.h"

#include "vcckit/edit/operation.h"

#include "core/handles.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace vcc::kit::edit {

using nlohmann::json;

// How the library writes and reads the parts.

static void to_json(json& list, const MergeConflict& conflict) {
    list = {conflict.mine.begin, conflict.mine.end, conflict.base, conflict.theirs, conflict.removed};
}

static void from_json(const json& list, MergeConflict& conflict) {
    conflict = {{list.at(0), list.at(1)}, list.at(2), list.at(3), list.at(4)};
}

static void to_json(json& list, const History::Step& step) {
    list = {step.change.at, step.change.before, step.change.after, step.label,
            step.resolved ? json(*step.resolved) : json()};
}

static void from_json(const json& list, History::Step& step) {
    step = {{list.at(0), list.at(1), list.at(2)}, list.at(3), {}};
    if (!list.at(4).is_null())
        step.resolved = list.at(4).get<MergeConflict>();
}

static void to_json(json& object, const UnsavedDocument& document) {
    object = {{"file", document.file},
              {"disk", document.disk},
              {"text", document.text},
              {"saving", document.packed_files_old},
              {"conflicts", document.conflicts},
              {"history", {{"done", document.history.done()}, {"steps", document.history.steps()}}}};
}

static void from_json(const json& object, UnsavedDocument& document) {
    const json& history = object.at("history");
    document = {object.at("file"),   object.at("disk"),      object.at("text"),
                object.at("saving"), object.at("conflicts"), History(history.at("steps"), history.at("done"))};
}

std::string text_of_work(const UnsavedWork& work) {
    return json(work).dump(-1, ' ', false, json::error_handler_t::replace);
}

UnsavedWork work_of_text(std::string_view text) {
    UnsavedWork work;
    try {
        work = json::parse(text);
    } catch (const json::exception&) { // damaged, written by another version, or by hand
        return {};
    }
    std::erase_if(work, [](const auto& each) {
        const UnsavedDocument& document = each.second;
        return document.text.size() > document_limit || document.disk.size() > document_limit ||
               !document.history.fits(document.text) ||
               !std::ranges::all_of(document.conflicts, [&](const MergeConflict& conflict) {
                   return conflict.mine.begin <= conflict.mine.end && conflict.mine.end <= document.text.size();
               });
    });
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
    FilePtr file(descriptor >= 0 ? ::fdopen(descriptor, "wb") : nullptr);
    if (file && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
        std::fclose(file.release()) == 0 && ::rename(temporary.c_str(), path.c_str()) == 0)
        return {};
    const int fault = errno;
    ::unlink(temporary.c_str());
    return "cannot write " + path + ": " + std::strerror(fault);
}

} // namespace vcc::kit::edit
