// What the page changes.
#include "vcckit/serve/session.h"
#include "vcckit/serve/start_process.h"

#include "platform/files.h"

#include <algorithm>
#include <filesystem>

namespace vcc::kit::edit {

using nlohmann::json;

namespace {

std::string name_of_document(const json& body) {
    const auto name = text_entry(body, "name");
    return name ? *name : throw BadRequest("name is that of a document");
}

/// The page that asks.
std::string page_of(const json& body) {
    return text_entry(body, "page").value_or("");
}

} // namespace

/// A document after a change that was asked for, for everybody.
Answer Session::changed(const Document& document, const json& body) {
    const json before = std::move(told_[document.name]);
    const json& now = json_of(document);
    const bool is_known = body.contains("view") && body.contains("revision") && !before.is_null() &&
                          before["revision"] == body["revision"];
    json told = is_known ? difference_json(before, now) : now;
    const std::string pixels = add_picture(body, told);
    tell_change(document, page_of(body));
    if (other_pictures_)
        tell_files();
    return {.type = "application/octet-stream", .body = text_of_json(told) + "\n" + pixels};
}

Answer Session::edit(const json& body) {
    const EditRequest request = edit_request_of(body);
    const Document& before = named(request.name);
    if (before.revision != request.revision && !request.operations.front().base)
        return {.status = status::out_of_date,
                .body = text_of_json({{"error", stale_reason}, {"document", json_of(before)}})};
    return changed(workspace_.edit(request), body);
}

Answer Session::undo(const json& body) {
    return changed(workspace_.undo(name_of_document(body)), body);
}

Answer Session::redo(const json& body) {
    return changed(workspace_.redo(name_of_document(body)), body);
}

Answer Session::save(const json& body) {
    const Saved saved =
        workspace_.save([this](const std::string& file, const std::string& text) { return check(file, text); });
    json faults = json::array();
    for (const Fault& fault : saved.faults)
        faults.push_back(fault_json(fault, std::filesystem::path(fault.file).stem().string(), slot_of_fault(fault)));
    if (!faults.empty() && saved.files.empty())
        return {.status = status::refused,
                .body = text_of_json(
                    {{"error", "nothing is written: a source has a fault"}, {"faults", std::move(faults)}})};
    json documents = json::array();
    for (const auto& [name, document] : workspace_.documents()) {
        if (const auto told = told_.find(name);
            told != told_.end() && told->second.value("revision", std::int64_t{-1}) == document.revision)
            continue;
        documents.push_back(json_of(document));
        tell_change(document, page_of(body));
    }
    return {.body = text_of_json(
                {{"saved", saved.files}, {"faults", std::move(faults)}, {"documents", std::move(documents)}})};
}

Answer Session::resolve(const json& body) {
    const std::string name = name_of_document(body);
    const auto conflict = number_entry(body, "conflict", 0, static_cast<std::int64_t>(document_limit));
    if (!conflict)
        throw BadRequest("conflict is the number of one, from 0");
    const auto choice = text_entry(body, "choice");
    constexpr std::string_view choices[] = {"mine", "theirs", "both"};
    const auto* const chosen = std::ranges::find(choices, choice.value_or(""));
    if (chosen == std::end(choices))
        throw BadRequest("choice is mine, theirs or both");
    if (const Document* const left = workspace_.resolve(name, static_cast<std::size_t>(*conflict),
                                                        static_cast<Choice>(chosen - std::begin(choices))))
        return changed(*left, body);
    sources_changed({name});
    return {.body = text_of_json({{"documents", json::array()}}) + "\n"};
}

Answer Session::recover(const json& body) {
    if (!body.contains("take") || !body["take"].is_boolean())
        throw BadRequest("take is true or false");
    workspace_.recover(body["take"].get<bool>());
    json documents = json::array();
    for (const auto& [name, document] : workspace_.documents()) {
        documents.push_back(json_of(document));
        tell_change(document);
    }
    return {.body = text_of_json({{"documents", std::move(documents)}})};
}

Answer Session::play() {
    const std::string program = platform::resolve_path((std::filesystem::path(folder()) / "vcc").string());
    if (!platform::file_exists(program))
        throw Refused(folder() + " has no program vcc: a copy of it there runs the installation");
    const std::lock_guard held(player_mutex_); // edits go on
    if (player_ > 0 && runs(player_))
        throw Refused("the program runs already: leave it first");
    const auto started = start_process({program}, folder());
    if (!started)
        throw Refused(started.reason());
    if (*started == 0) // it says why in its log
        throw Refused("the program ended at once: is there a display? (DISPLAY)");
    player_ = *started;
    return {.body = text_of_json({{"started", true}})};
}

} // namespace vcc::kit::edit
