#include "edit/workspace.h"

#include "edit/workspace_parts.h"
#include "packed_screen.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

Document* Workspace::Parts::find(const std::string& name) {
    const auto found = std::ranges::find(documents, name, &Document::name);
    return found == documents.end() ? nullptr : &*found;
}

namespace {

/// A stretch of a text after a change of it elsewhere, or in it.
Span moved(Span span, const Change& change) {
    const std::size_t end = change.at + change.before.size();
    const auto beyond = [&](std::size_t at) { return at - change.before.size() + change.after.size(); };
    if (end <= span.begin && change.at < span.begin)
        return {beyond(span.begin), beyond(span.end)};
    if (change.at >= span.end)
        return span;
    return {std::min(span.begin, change.at), beyond(std::max(span.end, end))};
}

constexpr std::size_t journal_limit = 32u << 20; ///< bytes; a longer one begins anew

} // namespace

void Workspace::Parts::show(Document& document, std::string text) {
    const Change change = change_between(document.text, text);
    for (MergeConflict& conflict : document.conflicts)
        conflict.mine = moved(conflict.mine, change);
    document.text.swap(text);
    ++document.revision;
    if (!offered.empty())
        return; // the journal has to keep that; what changed is on disk
    if (journal.trouble().empty() && journal.size() < journal_limit)
        journal.note(document.name, document.file, text, document.text);
    else
        restart_journal();
}

void Workspace::Parts::change(Document& document, std::string text, const std::string& label,
                              const std::string& merge_key) {
    document.history.note(document.text, text, label, merge_key);
    show(document, std::move(text));
}

void Workspace::Parts::restart_journal() {
    if (!offered.empty())
        return;
    JournalContents contents;
    for (const Document& document : documents)
        if (document.text != document.base || document.packed_files_old)
            contents[document.name] = {document.file, document.base, document.text, document.packed_files_old};
    journal.replace(contents);
}

DocumentState state_of(const Document& document) {
    DocumentState state;
    state.name = document.name;
    state.file = document.file;
    state.kind = document.kind;
    state.text = document.text;
    state.revision = document.revision;
    state.dirty = document.dirty();
    state.undo_label = document.history.undo_label();
    state.redo_label = document.history.redo_label();
    for (const MergeConflict& conflict : document.conflicts)
        state.conflicts.push_back({line_at(document.text, conflict.mine.begin), conflict.base,
                                   document.text.substr(conflict.mine.begin, conflict.mine.end - conflict.mine.begin),
                                   conflict.theirs});
    return state;
}

EditRules rules_of(const Document& document) {
    return {document.name};
}

Failure unknown_document(const std::string& name) {
    return {"there is no document \"" + name + "\""};
}

namespace {

/// Where the sources of an installation are when nobody says so.
std::string usual_screens(const fs::path& folder) {
    std::error_code error;
    for (const fs::path& screens : {folder / "screens", folder.parent_path() / "screens"})
        if (fs::is_directory(screens, error))
            return screens.string();
    return (folder / "screens").string();
}

} // namespace

Workspace::Workspace(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
Workspace::~Workspace() = default;

Result<std::unique_ptr<Workspace>> Workspace::open(const std::string& folder, const std::string& screens) {
    std::error_code error;
    const fs::path whole = fs::canonical(folder, error);
    if (error || !is_installation(whole.string()))
        return Failure{folder + (error ? " does not exist" : " is not an installation") +
                       ": there is neither tools/language.ini nor tools/vcc.buf nor data/configs/vcc.cfg in it"};
    if (!screens.empty() && !fs::is_directory(screens, error))
        return Failure{screens + " is not a folder"};
    auto parts = std::make_unique<Parts>();
    parts->folder = whole.string();
    parts->screens = screens.empty() ? usual_screens(whole) : fs::canonical(screens, error).string();
    for (const std::string& each : std::set{parts->folder, parts->screens}) {
        if (!fs::is_directory(each, error))
            continue;
        auto lock = FolderLock::take(each);
        if (!lock)
            return Failure{lock.reason()};
        parts->locks.push_back(std::move(*lock));
    }
    auto documents = find_documents(parts->folder, parts->screens);
    if (!documents)
        return Failure{documents.reason()};
    parts->documents = std::move(*documents);
    const std::string state = state_folder(parts->screens);
    parts->journal = Journal(state.empty() ? "" : state + "/journal");
    parts->read_offer();
    return std::unique_ptr<Workspace>(new Workspace(std::move(parts)));
}

const std::string& Workspace::folder() const {
    return parts_->folder;
}

const std::string& Workspace::screens_folder() const {
    return parts_->screens;
}

bool Workspace::sources_are_made() const {
    return std::ranges::any_of(parts_->documents, [](const Document& document) { return !document.on_disk; });
}

const std::string& Workspace::trouble() const {
    return parts_->journal.trouble();
}

std::vector<DocumentState> Workspace::documents() const {
    std::vector<DocumentState> states;
    for (const Document& document : parts_->documents)
        states.push_back(state_of(document));
    return states;
}

Result<DocumentState> Workspace::document(const std::string& name) const {
    const Document* const document = parts_->find(name);
    if (!document)
        return unknown_document(name);
    return state_of(*document);
}

Result<DocumentState> Workspace::edit(const std::string& name, std::int64_t revision, const std::string& label,
                                      const std::string& merge_key, std::span<const Operation> operations) {
    Document* const document = parts_->find(name);
    if (!document)
        return unknown_document(name);
    if (!parts_->offered.empty())
        return Failure{undecided_reason};
    if (revision != document->revision)
        return Failure{stale_reason};
    auto text = apply(document->text, document->kind, operations, rules_of(*document));
    if (!text)
        return Failure{text.reason()};
    if (*text != document->text)
        parts_->change(*document, std::move(*text), label.empty() ? label_of(operations) : label, merge_key);
    return state_of(*document);
}

Result<DocumentState> Workspace::undo(const std::string& name) {
    Document* const document = parts_->find(name);
    if (!document)
        return unknown_document(name);
    if (document->history.undo_label().empty())
        return Failure{"there is nothing to undo"};
    parts_->show(*document, document->history.undo(document->text));
    return state_of(*document);
}

Result<DocumentState> Workspace::redo(const std::string& name) {
    Document* const document = parts_->find(name);
    if (!document)
        return unknown_document(name);
    if (document->history.redo_label().empty())
        return Failure{"there is nothing to redo"};
    parts_->show(*document, document->history.redo(document->text));
    return state_of(*document);
}

} // namespace vcc::kit::edit
