// What the page changes.
#include "serve/operation_json.h"
#include "serve/session.h"
#include "serve/start_process.h"

#include "platform/files.h"

#include <filesystem>

namespace vcc::kit::edit {

using nlohmann::json;

namespace {

std::string text_of_json(const json& object) {
    return object.dump(-1, ' ', false, json::error_handler_t::replace);
}

Answer no_name() {
    return refusal(status::bad_request, "name is that of a document");
}

} // namespace

/// A document after a change that was asked for, for everybody.
Answer Session::changed(const Result<DocumentState>& document) {
    if (!document)
        return refusal(status::refused, document.reason());
    Answer answer{.body = text_of_json(json_of(*document))};
    tell_change(*document);
    return answer;
}

Answer Session::edit(const json& body) {
    const auto request = edit_request_of(body);
    if (!request)
        return refusal(status::bad_request, request.reason());
    const Lock held = lock();
    const auto before = workspace_->document(request->name);
    if (!before)
        return refusal(status::not_found, before.reason());
    if (before->revision != request->revision)
        return {.status = status::out_of_date,
                .body = text_of_json({{"error", stale_reason}, {"document", json_of(*before)}})};
    return changed(
        workspace_->edit(request->name, request->revision, request->label, request->merge_key, request->operations));
}

Answer Session::undo(const json& body) {
    const auto name = text_entry(body, "name");
    if (!name)
        return no_name();
    const Lock held = lock();
    return changed(workspace_->undo(*name));
}

Answer Session::redo(const json& body) {
    const auto name = text_entry(body, "name");
    if (!name)
        return no_name();
    const Lock held = lock();
    return changed(workspace_->redo(*name));
}

Answer Session::save(const json&) {
    const Lock held = lock();
    const auto saved =
        workspace_->save([this](const std::string& file, const std::string& text) { return check(file, text); });
    if (!saved)
        return refusal(status::refused, saved.reason());
    if (!saved->faults.empty()) {
        json faults = json::array();
        for (const Fault& fault : saved->faults)
            faults.push_back(
                fault_json(fault, std::filesystem::path(fault.file).stem().string(), slot_of_fault(fault)));
        return {.status = status::refused,
                .body = text_of_json(
                    {{"error", "nothing is written: a source has a fault"}, {"faults", std::move(faults)}})};
    }
    json documents = json::array();
    for (const DocumentState& document : workspace_->documents()) {
        documents.push_back(json_of(document));
        tell_change(document);
    }
    return {.body = text_of_json({{"saved", saved->files}, {"documents", std::move(documents)}})};
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
            return changed(workspace_->resolve(*name, static_cast<std::size_t>(*conflict), chosen));
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
    if (const std::string reason = start_process({program}, folder()); !reason.empty())
        return refusal(status::refused, reason);
    return {.body = text_of_json({{"started", true}})};
}

} // namespace vcc::kit::edit
