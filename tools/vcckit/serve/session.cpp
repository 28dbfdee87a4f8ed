#include "vcckit/serve/session.h"
#include "screen/text_window.h"

#include "vcckit/check/installation.h"
#include "vcckit/edit/document_kinds.h"
#include "vcckit/source/packed_screen.h"
#include "vcckit/text/complain.h"

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
    auto described = describe(document.text, document.kind, {document.name});
    reading.stale =
        !(row_of(document.kind).packed ? show_packed(document, reading) : show_installed(document, reading));
    if (!reading.stale)
        reading.description = std::move(described).value_or({});
    return reading;
}

/// Puts what a source makes on the stage; false when it makes nothing.
bool Session::show_packed(const DocumentState& document, Reading& reading) {
    SourceCheck checked = check(document.file, document.text);
    reading.faults = std::move(checked.faults);
    if (!checked.readable)
        return false;
    if (const auto put = stage_->put(checked.screen); !put)
        complain(put.reason());
    reading.screen = std::move(checked.screen);
    return true;
}

/// The same for a text that the program reads itself.
bool Session::show_installed(const DocumentState& document, Reading& reading) {
    const KindRow& row = row_of(document.kind);
    const auto bytes = bytes_of_text(document.text, document.kind);
    const std::string fault = bytes ? row.fault(document.text) : "has characters beyond Latin-1";
    reading.faults.clear();
    if (!fault.empty()) {
        reading.faults.push_back(
            source_fault(bytes ? row.code : FaultCode::not_latin1, {1, 1, 0}, "", "", fault, row.advice));
        reading.faults.back().file = document.file;
        return false;
    }
    for (const std::string& name : document.installs) {
        const auto put = stage_->put_file(name, *bytes);
        if (!put)
            complain(put.reason());
        else if (*put && renderer_ && name == path::buffer_list)
            load_pictures();
        for (std::size_t i = 0; i < languages.size(); ++i)
            if (name == language_file_name(languages[i], path::text_windows)) {
                windows_[i] = {};
                read_text_windows(*bytes, windows_[i], nullptr);
            }
    }
    return true;
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
    } else if (other_pictures_) {
        tell_files();
    }
    tell_notices();
}

/// Buffers are there with the next picture.
void Session::load_pictures() {
    renderer_->forget();
    draw({});
    other_pictures_ = true;
}

/// Pages ask again for what pictures are made of.
void Session::tell_files() {
    other_pictures_ = false;
    events_.tell("files", "{}");
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
    tell_files();
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
