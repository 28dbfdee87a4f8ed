// What the page changes.
#include "vcckit/serve/operation_json.h"
#include "vcckit/serve/session.h"
#include "vcckit/serve/start_process.h"

#include "platform/files.h"

#include <filesystem>

namespace vcc::kit::edit {

using nlohmann::json;

namespace {

Answer no_name() {
    return refusal(status::bad_request, "name is that of a document");
}

} // namespace

/// A document after a change that was asked for, for everybody.
Answer Session::changed(const Result<DocumentState>& document, const json& body) {
    tell_notices();
    if (!document)
        return refusal(status::refused, document.reason());
    if (document->gone) {
        sources_changed({document->name});
        return {.body = text_of_json({{"documents", json::array()}}) + "\n"};
    }
    const json before = std::move(told_[document->name]);
    const json& now = json_of(*document);
    const bool is_known = body.contains("view") && body.contains("revision") && !before.is_null() &&
                          before["revision"] == body["revision"];
    json told = is_known ? difference_json(before, now) : now;
    const std::string pixels = add_picture(body, told);
    tell_change(*document, text_entry(body, "page").value_or(""));
    if (other_pictures_)
        tell_files();
    return {.type = "application/octet-stream", .body = text_of_json(told) + "\n" + pixels};
}

Answer Session::edit(const json& body) {
    const auto request = edit_request_of(body);
    if (!request)
        return refusal(status::bad_request, request.reason());
    const Lock held = lock();
    const auto before = workspace_->document(request->name);
    if (!before)
        return refusal(status::not_found, before.reason());
    if (before->revision != request->revision && !request->operations.front().base)
        return {.status = status::out_of_date,
                .body = text_of_json({{"error", stale_reason}, {"document", json_of(*before)}})};
    return changed(
        workspace_->edit(request->name, request->revision, request->label, request->merge_key, request->operations),
        body);
}

Answer Session::undo(const json& body) {
    const auto name = text_entry(body, "name");
    if (!name)
        return no_name();
    const Lock held = lock();
    return changed(workspace_->undo(*name), body);
}

Answer Session::redo(const json& body) {
    const auto name = text_entry(body, "name");
    if (!name)
        return no_name();
    const Lock held = lock();
    return changed(workspace_->redo(*name), body);
}

Answer Session::save(const json& body) {
    const Lock held = lock();
    const auto saved =
        workspace_->save([this](const std::string& file, const std::string& text) { return check(file, text); });
    if (!saved)
        return refusal(status::refused, saved.reason());
    json faults = json::array();
    for (const Fault& fault : saved->faults)
        faults.push_back(fault_json(fault, std::filesystem::path(fault.file).stem().string(), slot_of_fault(fault)));
    if (!faults.empty() && saved->files.empty())
        return {.status = status::refused,
                .body = text_of_json(
                    {{"error", "nothing is written: a source has a fault"}, {"faults", std::move(faults)}})};
    json documents = json::array();
    for (const DocumentState& document : workspace_->documents()) {
        if (const auto told = told_.find(document.name);
            told != told_.end() && told->second.value("revision", std::int64_t{-1}) == document.revision)
            continue;
        documents.push_back(json_of(document));
        tell_change(document, text_entry(body, "page").value_or(""));
    }
    return {.body = text_of_json(
                {{"saved", saved->files}, {"faults", std::move(faults)}, {"documents", std::move(documents)}})};
}

Answer Session::resolve(const json& body) {
    const auto name = text_entry(body, "name"), choice = text_entry(body, "choice");
    const auto conflict = number_entry(body, "conflict", 0, static_cast<std::int64_t>(document_limit));
    if (!name)
        return no_name();
    if (!conflict)
        return refusal(status::bad_request, "conflict is the number of one, from 0");
    constexpr std::pair<const char*, Choice> choices[] = {
        {"mine", Choice::mine}, {"theirs", Choice::theirs}, {"both", Choice::both}};
    for (const auto& [word, chosen] : choices)
        if (choice && *choice == word) {
            const Lock held = lock();
            return changed(workspace_->resolve(*name, static_cast<std::size_t>(*conflict), chosen), body);
        }
    return refusal(status::bad_request, "choice is mine, theirs or both");
}

Answer Session::recover(const json& body) {
    if (!body.contains("take") || !body["take"].is_boolean())
        return refusal(status::bad_request, "take is true or false");
    const Lock held = lock();
    const auto recovered = workspace_->recover(body["take"].get<bool>());
    if (!recovered)
        return refusal(status::refused, recovered.reason());
    json documents = json::array();
    for (const DocumentState& document : workspace_->documents()) {
        documents.push_back(json_of(document));
        tell_change(document);
    }
    return {.body = text_of_json({{"documents", std::move(documents)}})};
}

Answer Session::play(const json&) {
    const std::string program = platform::resolve_path((std::filesystem::path(folder()) / "vcc").string());
    if (!platform::file_exists(program))
        return refusal(status::refused, folder() + " has no program vcc: a copy of it there runs the installation");
    const std::lock_guard held(player_mutex_); // edits go on
    if (player_ > 0 && runs(player_))
        return refusal(status::refused, "the program runs already: leave it first");
    const auto started = start_process({program}, folder());
    if (!started)
        return refusal(status::refused, started.reason());
    if (*started == 0) // it says why in its log
        return refusal(status::refused, "the program ended at once: is there a display? (DISPLAY)");
    player_ = *started;
    return {.body = text_of_json({{"started", true}})};
}

} // namespace vcc::kit::edit
