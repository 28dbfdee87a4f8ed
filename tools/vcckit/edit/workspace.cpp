#include "vcckit/edit/workspace.h"

#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/text_edits.h"
#include "vcckit/source/packed_screen.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

namespace {

/// Refuses a name that no document has.
template <class Documents>
auto& named(Documents& documents, const std::string& name) {
    const auto found = documents.find(name);
    if (found == documents.end())
        throw Refused("there is no document \"" + name + "\"");
    return found->second;
}

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

/// Where the sources of an installation are when nobody says so.
std::string usual_screens(const fs::path& folder) {
    std::error_code error;
    for (const fs::path& screens : {folder / "screens", folder.parent_path() / "screens"})
        if (fs::is_directory(screens, error))
            return screens.string();
    return (folder / "screens").string();
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

void Workspace::bring_in(Document& document, const std::string& base, const std::string& other) {
    Merged merged = merge(base, document.text, other);
    if (merged.text != document.text)
        change(document, std::move(merged.text), "Change on disk", "");
    else
        ++document.revision;
    document.conflicts.insert(document.conflicts.end(), merged.conflicts.begin(), merged.conflicts.end());
}

void Workspace::keep() {
    if (!offered_.empty())
        return; // the file has to keep that; what is done until then is on disk
    UnsavedWork work;
    for (const auto& [name, each] : documents_)
        if (each.text != each.disk || each.packed_files_old || !each.conflicts.empty())
            work[name] = each;
    std::error_code error;
    if (unsaved_.empty())
        trouble_ = "there is neither XDG_STATE_HOME nor HOME to keep unsaved changes in";
    else if (!work.empty())
        trouble_ = put_quickly(unsaved_, text_of_work(work));
    else
        trouble_ = (fs::remove(unsaved_, error), error) ? "cannot remove " + unsaved_ + ": " + error.message() : "";
}

Workspace::Workspace(const std::string& folder, const std::string& screens) {
    std::error_code error;
    const fs::path whole = fs::canonical(folder, error);
    if (error || !is_installation(whole.string()))
        throw Refused(folder + (error ? " does not exist" : " is not an installation") +
                      ": there is neither tools/language.ini nor tools/vcc.buf nor data/configs/vcc.cfg in it");
    if (!screens.empty() && !fs::is_directory(screens, error))
        throw Refused(screens + " is not a folder");
    folder_ = whole.string();
    screens_ = screens.empty() ? usual_screens(whole) : fs::canonical(screens, error).string();
    files_ = fs::weakly_canonical(fs::path(screens_).parent_path() / "files", error).string();
    for (const std::string& each : std::set{folder_, screens_})
        if (fs::is_directory(each, error))
            locks_.emplace_back(each);
    if (std::string reason = add_documents(); !reason.empty())
        throw Refused(reason);
    const std::string state = state_folder(screens_);
    unsaved_ = state.empty() ? "" : state + "/unsaved.json";
    read_offer();
}

const Document& Workspace::document(const std::string& name) const {
    return named(documents_, name);
}

void Workspace::expect_decided() const {
    if (!offered_.empty())
        throw Refused("an earlier session left unsaved changes: take them or drop them first");
}

const Document& Workspace::edit(const EditRequest& request) {
    Document& document = named(documents_, request.name);
    expect_decided();
    // A whole text may be older than what others have written since: both are kept.
    const Operation* const whole = request.operations.size() == 1 ? request.operations.data() : nullptr;
    const bool merges = whole && whole->what == Operation::Do::replace_text && whole->base;
    if (!merges && request.revision != document.revision)
        throw Refused(stale_reason);
    Merged next{apply(document.text, document.kind, request.operations, request.name), {}};
    if (merges)
        next = merge(*whole->base, next.text, document.text);
    if (next.text == document.text && next.conflicts.empty())
        return document;
    if (next.text != document.text)
        change(document, std::move(next.text),
               merges || !request.label.empty() ? request.label : label_of(request.operations), request.merge_key);
    document.conflicts.insert(document.conflicts.end(), next.conflicts.begin(), next.conflicts.end());
    keep();
    return document;
}

const Document& Workspace::travel(const std::string& name, bool back) {
    Document& document = named(documents_, name);
    const History::Step* const step = document.history.next(back);
    if (!step)
        throw Refused(std::string("there is nothing to ") + (back ? "undo" : "redo"));
    const auto resolved = step->resolved;
    if (resolved && !back)
        std::erase_if(document.conflicts, [&](const MergeConflict& each) { return each.mine == resolved->mine; });
    show(document, document.history.travel(document.text, back));
    if (resolved && back)
        document.conflicts.push_back(*resolved);
    keep();
    return document;
}

const Document* Workspace::resolve(const std::string& name, std::size_t conflict, Choice choice) {
    Document& document = named(documents_, name);
    if (conflict >= document.conflicts.size())
        throw Refused(name + " has no such conflict");
    MergeConflict chosen = document.conflicts[conflict];
    if (chosen.removed && choice == Choice::theirs) {
        document.text = document.disk;
        document.made = true;
        document.conflicts.clear();
        ++document.revision;
        take_disk_changes(); // it goes, or is made from what is installed
        keep();
        const auto left = documents_.find(name);
        return left == documents_.end() ? nullptr : &left->second;
    }
    const std::size_t size = chosen.mine.end - chosen.mine.begin;
    std::string text = document.text;
    if (choice == Choice::theirs) {
        text.replace(chosen.mine.begin, size, chosen.theirs);
    } else if (choice == Choice::both && !chosen.removed) {
        const bool unended = size > 0 && text[chosen.mine.end - 1] != '\n';
        text.insert(chosen.mine.end, (unended ? std::string(line_end_of(text)) : "") + chosen.theirs);
        const auto& fault = row_of(document.kind).fault;
        if (fault(document.text).empty() && !fault(text).empty())
            throw Refused("both together are no source: choose one of them, and write the other where it belongs");
    }
    document.conflicts.erase(document.conflicts.begin() + static_cast<std::ptrdiff_t>(conflict));
    change(document, std::move(text), "Decide between here and the file", "", std::move(chosen));
    keep();
    return &document;
}

} // namespace vcc::kit::edit
