#include "vcckit/serve/session.h"
#include "screen/text_window.h"

#include "vcckit/check/installation.h"
#include "vcckit/source/packed_screen.h"
#include "vcckit/text/complain.h"
#include "vcckit/text/latin1.h"

#include "platform/files.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace vcc::kit::edit {

namespace fs = std::filesystem;
using nlohmann::json;

Answer refusal(int status, const std::string& reason) {
    return {.status = status, .body = text_of_json({{"error", reason}})};
}

namespace {

/// A window file of its own belongs to the language in whose folder it is; one among the sources to both.
bool serves(const DocumentState& document, const fs::path& installation, const LanguageRow& language) {
    const auto file_of = [&](const LanguageRow& row) {
        return platform::resolve_path((installation / language_file_name(row, path::text_windows)).string());
    };
    if (std::ranges::none_of(languages, [&](const LanguageRow& row) { return file_of(row) == document.file; }))
        return true;
    return file_of(language) == document.file;
}

/// What is loaded once: fonts, pictures, sounds and their lists, settings.
bool is_kept(const fs::path& installation, const fs::path& path) {
    const std::string name = path.lexically_relative(installation).generic_string();
    return !name.starts_with("..") && !name.starts_with("tools/language/") && !name.starts_with("help/") &&
           path.extension() != ".toml";
}

} // namespace

Result<std::unique_ptr<Session>> Session::open(const std::string& folder, const std::string& screens) {
    auto workspace = Workspace::open(folder, screens);
    if (!workspace)
        return Failure{workspace.reason()};
    auto stage = Stage::make((*workspace)->folder());
    if (!stage)
        return Failure{stage.reason()};
    platform::enter_folder((*stage)->folder().string());
    std::unique_ptr<Session> session(new Session(std::move(*workspace), std::move(*stage)));
    session->prepare();
    return session;
}

Session::Session(std::unique_ptr<Workspace> workspace, std::unique_ptr<Stage> stage)
    : workspace_(std::move(workspace)), stage_(std::move(stage)), library_(std::make_unique<Library>()) {}

Session::~Session() {
    renderer_.reset();
    library_.reset();
    platform::enter_folder(folder()); // the stage goes
}

Session::Lock Session::lock() {
    ++waiting_;
    Lock lock(mutex_);
    --waiting_;
    return lock;
}

/// Loads what pictures are made of, and puts all working texts on the stage.
void Session::prepare() {
    fonts_ = load_measuring_fonts();
    for (const DocumentState& document : workspace_->documents())
        read(document);
    renderer_ = std::make_unique<Renderer>();
    draw({}); // sounds and pictures are known from here on
    tell_notices();
}

/// What is not as it should be, until it is.
void Session::tell_notices() {
    json notices = json::array();
    if (!workspace_->trouble().empty())
        notices.push_back("Unsaved changes would not outlive a crash: " + workspace_->trouble());
    for (const std::string& each : {workspace_->away(), stage_->left_out()})
        if (!each.empty())
            notices.push_back(each);
    const std::string told = text_of_json({{"notices", notices}});
    if (told == notices_)
        return;
    notices_ = told;
    for (const json& each : notices)
        complain(each);
    events_.tell_state("notices", told);
}

SourceCheck Session::check(const std::string& file, const std::string& text) const {
    // A screen that only a module reads is a document, too.
    return check_source(file, text, {.any_name = true, .fonts = fonts_, .ignored = {}});
}

const Reading& Session::read(const DocumentState& document) {
    Reading& reading = readings_[document.name];
    if (reading.revision == document.revision)
        return reading;
    reading.revision = document.revision;
    if (document.kind == DocumentKind::screen)
        read_screen(document, reading);
    else
        read_windows(document, reading);
    return reading;
}

void Session::read_screen(const DocumentState& document, Reading& reading) {
    SourceCheck checked = check(document.file, document.text);
    auto described = describe(document.text, document.kind, {document.name});
    reading.faults = std::move(checked.faults);
    reading.stale = !checked.readable;
    if (reading.stale)
        return;
    reading.description = std::move(described).value_or({});
    if (const auto put = stage_->put(checked.screen); !put)
        complain(put.reason());
    reading.screen = std::move(checked.screen);
}

void Session::read_windows(const DocumentState& document, Reading& reading) {
    const auto bytes = to_latin1(document.text);
    auto described = describe(document.text, document.kind, {});
    std::array<TextWindow, text_window_count> windows;
    const bool usable = bytes && read_text_windows(*bytes, windows, nullptr) > 0;
    reading.faults.clear();
    if (!usable) {
        reading.faults.push_back(source_fault(bytes ? FaultCode::window_missing : FaultCode::not_latin1, {1, 1, 0}, "",
                                              "", bytes ? "describes no window" : "has characters beyond Latin-1",
                                              "describe the windows; each has a \"-\" line"));
        reading.faults.back().file = document.file;
    }
    reading.stale = !usable;
    if (reading.stale)
        return;
    reading.description = std::move(described).value_or({});
    for (std::size_t i = 0; i < languages.size(); ++i) {
        if (!serves(document, folder(), languages[i]))
            continue;
        windows_[i] = windows;
        const std::string name = language_file_name(languages[i], path::text_windows);
        if (const auto put = stage_->put_file(name, *bytes); !put)
            complain(put.reason());
    }
}

const json& Session::json_of(const DocumentState& document) {
    return told_[document.name] = document_json(document, read(document), windows_);
}

/// `page` has asked for it, and knows.
void Session::tell_change(const DocumentState& document, const std::string& page) {
    ++changes_;
    news_.notify_all();
    events_.tell("document", json{{"name", document.name}, {"revision", document.revision}, {"page", page}}.dump());
    tell_notices();
}

void Session::follow(const std::set<std::string>& paths) {
    const Lock held = lock();
    sources_changed(workspace_->take_disk_changes());
    bool kept = false, others = false;
    for (const std::string& path : paths) {
        const bool source = fs::path(path).parent_path() == screens_folder() || stage_->is_in_step(path);
        others = others || !source;
        kept = kept || (!source && is_kept(folder(), path));
    }
    if (others)
        files_changed(kept);
}

void Session::sources_changed(const std::vector<std::string>& names) {
    bool other_ones = false;
    for (const std::string& name : names) {
        const auto document = workspace_->document(name);
        other_ones = other_ones || !document || !readings_.contains(name);
        if (!document) {
            readings_.erase(name);
        } else {
            read(*document);
            tell_change(*document);
        }
    }
    if (other_ones) {
        stage_->begin_anew();
        for (auto& [name, reading] : readings_)
            reading.revision = -1;
        files_changed(false);
    }
    tell_notices();
}

void Session::files_changed(bool kept_ones) {
    stage_->follow();
    if (kept_ones) {
        fonts_ = load_measuring_fonts();
        renderer_->forget();
        for (auto& [name, reading] : readings_)
            reading.revision = -1; // aligned texts may be elsewhere
    }
    for (const DocumentState& document : workspace_->documents())
        read(document);
    ++changes_;
    news_.notify_all();
    events_.tell("files", "{}");
    tell_notices();
}

void Session::stop() {
    {
        const std::lock_guard held(mutex_);
        stopped_ = true;
    }
    news_.notify_all();
    events_.close();
}

} // namespace vcc::kit::edit
