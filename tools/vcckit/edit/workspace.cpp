#include "edit/workspace.h"

#include "edit/workspace_parts.h"
#include "packed_screen.h"

#include "core/files.h"
#include "platform/files.h"

#include <algorithm>
#include <filesystem>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

Document* Workspace::Parts::find(const std::string& name) {
    const auto found = std::ranges::find(documents, name, &Document::name);
    return found == documents.end() ? nullptr : &*found;
}

void Workspace::Parts::change(Document& document, std::string text, const std::string& label,
                              const std::string& merge_key) {
    document.history.note(document.text, text, label, merge_key);
    document.text = std::move(text);
    ++document.revision;
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
    return state;
}

EditRules rules_of(const Document& document) {
    return {document.name};
}

namespace {

Failure unknown_document(const std::string& name) {
    return {"there is no document \"" + name + "\""};
}

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
        return Failure{folder + (error ? " does not exist" : " is no installation") +
                       ": there is neither tools/language.ini nor tools/vcc.buf nor data/configs/vcc.cfg in it"};
    if (!screens.empty() && !fs::is_directory(screens, error))
        return Failure{screens + " is no folder"};
    auto parts = std::make_unique<Parts>();
    parts->folder = whole.string();
    parts->screens = screens.empty() ? usual_screens(whole) : fs::canonical(screens, error).string();
    auto documents = find_documents(parts->folder, parts->screens);
    if (!documents)
        return Failure{documents.reason()};
    parts->documents = std::move(*documents);
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
    document->text = document->history.undo(document->text);
    ++document->revision;
    return state_of(*document);
}

Result<DocumentState> Workspace::redo(const std::string& name) {
    Document* const document = parts_->find(name);
    if (!document)
        return unknown_document(name);
    if (document->history.redo_label().empty())
        return Failure{"there is nothing to redo"};
    document->text = document->history.redo(document->text);
    ++document->revision;
    return state_of(*document);
}

Result<Saved> Workspace::save(const CheckSource& check) {
    Saved saved;
    FileSet files;
    for (const Document& document : parts_->documents) {
        if (!document.dirty())
            continue;
        const auto bytes = bytes_of_text(document.text, document.kind);
        if (!bytes)
            return Failure{document.name + ": has a character outside Windows Latin-1"};
        std::string reason = files.write(document.file, *bytes);
        saved.files.push_back(document.file);
        for (const std::string& copy : document.copies) {
            if (reason.empty())
                reason = files.write(copy, *bytes);
            saved.files.push_back(copy);
        }
        if (document.kind == DocumentKind::screen && reason.empty()) {
            const SourceCheck checked = check(document.file, document.text);
            saved.faults.insert(saved.faults.end(), checked.faults.begin(), checked.faults.end());
            if (checked.faults.empty())
                reason = write_packed_screen(checked.screen, parts_->folder, files, saved.files);
        }
        if (!reason.empty())
            return Failure{std::move(reason)};
    }
    if (!saved.faults.empty()) {
        saved.files.clear();
        return saved;
    }
    if (std::string reason = files.commit(); !reason.empty())
        return Failure{std::move(reason)};
    for (Document& document : parts_->documents) {
        document.disk = document.text;
        document.on_disk = true;
        document.packed_files_old = false;
        document.history.end_row();
    }
    return saved;
}

std::vector<std::string> Workspace::take_disk_changes() {
    std::vector<std::string> changed;
    for (Document& document : parts_->documents) {
        const auto bytes = read_file(document.file, document_limit);
        if (!bytes || document.dirty()) // changes on both sides are not merged yet: ours stay
            continue;
        std::string text = text_of_bytes(*bytes, document.kind);
        if (text == document.disk)
            continue;
        document.disk = text;
        document.packed_files_old = true;
        parts_->change(document, std::move(text), "Change on disk", "");
        changed.push_back(document.name);
    }
    return changed;
}

Result<DocumentState> Workspace::resolve(const std::string& name, std::size_t, Choice) {
    return Failure{name + ": has no conflict"};
}

Recovery Workspace::recovered() const {
    return {};
}

Result<std::vector<DocumentState>> Workspace::recover(bool) {
    return Failure{"nothing was left to recover"};
}

} // namespace vcc::kit::edit
