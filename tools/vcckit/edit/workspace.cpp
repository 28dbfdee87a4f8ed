#include "vcckit/edit/workspace.h"

#include "vcckit/edit/source_edit.h"
#include "vcckit/source/packed_screen.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

namespace {

Failure unknown_document(const std::string& name) {
    return {"there is no document \"" + name + "\""};
}

} // namespace

Document* Workspace::find(const std::string& name) {
    const auto found = std::ranges::find(documents_, name, &Document::name);
    return found == documents_.end() ? nullptr : &*found;
}

Result<Document*> Workspace::found(const std::string& name) {
    Document* const document = find(name);
    return document ? Result<Document*>(document) : unknown_document(name);
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

} // namespace

void Workspace::show(Document& document, std::string text) {
    const Change change = change_between(document.text, text);
    for (MergeConflict& conflict : document.conflicts)
        conflict.mine = moved(conflict.mine, change);
    document.text.swap(text);
    ++document.revision;
}

void Workspace::change(Document& document, std::string text, const std::string& label, const std::string& merge_key,
                       std::optional<MergeConflict> resolved) {
    document.history.note(document.text, text, label, merge_key, std::move(resolved));
    show(document, std::move(text));
}

void Workspace::bring_in(Document& document, const std::string& base, const std::string& other,
                         const std::string& label, const std::string& merge_key) {
    Merged merged = merge(base, document.text, other);
    if (merged.text != document.text)
        change(document, std::move(merged.text), label, merge_key);
    else
        ++document.revision;
    document.conflicts.insert(document.conflicts.end(), merged.conflicts.begin(), merged.conflicts.end());
}

void Workspace::keep() {
    if (!offered_.empty())
        return; // the file has to keep that; what is done until then is on disk
    UnsavedWork work;
    for (const Document& each : documents_)
        if (each.text != each.disk || each.packed_files_old || !each.conflicts.empty())
            work[each.name] = {each.file, each.disk, each.text, each.packed_files_old, each.conflicts, each.history};
    std::error_code error;
    if (unsaved_.empty())
        trouble_ = "there is neither XDG_STATE_HOME nor HOME to keep unsaved changes in";
    else if (!work.empty())
        trouble_ = put_quickly(unsaved_, text_of_work(work));
    else
        trouble_ = (fs::remove(unsaved_, error), error) ? "cannot remove " + unsaved_ + ": " + error.message() : "";
}

DocumentState Workspace::state_of(const Document& document) {
    DocumentState state;
    state.name = document.name;
    state.file = document.file;
    state.kind = document.kind;
    state.installs = document.installs;
    state.text = document.text;
    state.revision = document.revision;
    state.dirty = document.dirty();
    state.made = document.made;
    for (const History::Step& step : document.history.steps())
        state.steps.push_back(step.label);
    state.done = document.history.done();
    for (const MergeConflict& conflict : document.conflicts)
        state.conflicts.push_back({line_at(document.text, conflict.mine.begin), conflict.base,
                                   document.text.substr(conflict.mine.begin, conflict.mine.end - conflict.mine.begin),
                                   conflict.theirs, conflict.removed});
    return state;
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

Result<std::unique_ptr<Workspace>> Workspace::open(const std::string& folder, const std::string& screens) {
    std::error_code error;
    const fs::path whole = fs::canonical(folder, error);
    if (error || !is_installation(whole.string()))
        return Failure{folder + (error ? " does not exist" : " is not an installation") +
                       ": there is neither tools/language.ini nor tools/vcc.buf nor data/configs/vcc.cfg in it"};
    if (!screens.empty() && !fs::is_directory(screens, error))
        return Failure{screens + " is not a folder"};
    std::unique_ptr<Workspace> opened(new Workspace);
    opened->folder_ = whole.string();
    opened->screens_ = screens.empty() ? usual_screens(whole) : fs::canonical(screens, error).string();
    opened->files_ = fs::weakly_canonical(fs::path(opened->screens_).parent_path() / "files", error).string();
    for (const std::string& each : std::set{opened->folder_, opened->screens_}) {
        if (!fs::is_directory(each, error))
            continue;
        auto lock = FolderLock::take(each);
        if (!lock)
            return Failure{lock.reason()};
        opened->locks_.push_back(std::move(*lock));
    }
    if (std::string reason = opened->add_documents(); !reason.empty())
        return Failure{std::move(reason)};
    const std::string state = state_folder(opened->screens_);
    opened->unsaved_ = state.empty() ? "" : state + "/unsaved.json";
    opened->read_offer();
    return opened;
}

std::vector<DocumentState> Workspace::documents() const {
    std::vector<DocumentState> states;
    for (const Document& document : documents_)
        states.push_back(state_of(document));
    return states;
}

Result<DocumentState> Workspace::document(const std::string& name) const {
    const auto document = std::ranges::find(documents_, name, &Document::name);
    return document == documents_.end() ? Result<DocumentState>(unknown_document(name)) : state_of(*document);
}

Result<DocumentState> Workspace::edit(const std::string& name, std::int64_t revision, const std::string& label,
                                      const std::string& merge_key, std::span<const Operation> operations) {
    const auto there = found(name);
    if (!there)
        return Failure{there.reason()};
    Document* const document = *there;
    if (!offered_.empty())
        return Failure{undecided_reason};
    // A whole text may be older than what others have written since: both are kept.
    const Operation* const whole = operations.size() == 1 ? operations.data() : nullptr;
    if (whole && whole->what == Operation::Do::replace_text && whole->base) {
        if (whole->text.size() > document_limit)
            return Failure{"the text would be longer than " + std::to_string(document_limit) + " bytes"};
        Merged merged = merge(*whole->base, whole->text, document->text);
        if (merged.text != document->text)
            change(*document, std::move(merged.text), label, merge_key);
        document->conflicts.insert(document->conflicts.end(), merged.conflicts.begin(), merged.conflicts.end());
        keep();
        return state_of(*document);
    }
    if (revision != document->revision)
        return Failure{stale_reason};
    auto text = apply(document->text, document->kind, operations, {document->name});
    if (!text)
        return Failure{text.reason()};
    if (*text != document->text) {
        change(*document, std::move(*text), label.empty() ? label_of(operations) : label, merge_key);
        keep();
    }
    return state_of(*document);
}

Result<DocumentState> Workspace::travel(const std::string& name, bool back) {
    const auto there = found(name);
    if (!there)
        return Failure{there.reason()};
    Document& document = **there;
    const History::Step* const step = back ? document.history.undoable() : document.history.redoable();
    if (!step)
        return Failure{std::string("there is nothing to ") + (back ? "undo" : "redo")};
    const auto resolved = step->resolved;
    if (resolved && !back)
        std::erase_if(document.conflicts, [&](const MergeConflict& each) { return each.mine == resolved->mine; });
    show(document, back ? document.history.undo(document.text) : document.history.redo(document.text));
    if (resolved && back)
        document.conflicts.push_back(*resolved);
    keep();
    return state_of(document);
}

} // namespace vcc::kit::edit
