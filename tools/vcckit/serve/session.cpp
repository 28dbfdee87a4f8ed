#include "vcckit/serve/session.h"

#include "vcckit/check/installation.h"
#include "vcckit/edit/document_kinds.h"
#include "vcckit/source/packed_screen.h"
#include "vcckit/text/complain.h"

#include "platform/files.h"
#include "screen/text_window.h"

#include <cstdio>
#include <filesystem>
#include <functional>

namespace vcc::kit::edit {

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

/// What is loaded once: fonts, pictures, sounds and their lists, settings.
bool is_kept(const fs::path& installation, const fs::path& path) {
    const std::string name = path.lexically_relative(installation).generic_string();
    return !name.starts_with("..") && !name.starts_with("tools/language/") && !name.starts_with("help/") &&
           path.extension() != ".toml";
}

/// What a handler answers, or why it does not.
Answer answered(const std::function<Answer()>& answer) try { return answer(); } catch (const BadRequest& bad) {
    return refusal(bad.status, bad.what());
} catch (const Refused& refused) {
    return refusal(status::refused, refused.what());
}

} // namespace

/// Loads what pictures are made of, and puts all working texts on the stage.
Session::Session(const std::string& folder, const std::string& screens)
    : workspace_(folder, screens), stage_(workspace_.folder()) {
    platform::enter_folder(stage_.folder().string());
    library_ = std::make_unique<Library>();
    fonts_ = load_measuring_fonts();
    for (const auto& [name, document] : workspace_.documents())
        read(document);
    renderer_ = std::make_unique<Renderer>();
    static_cast<void>(renderer_->draw({})); // sounds and pictures are known from here on
    tell_notices();
}

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

std::optional<Answer> Session::get(const std::string& name, const Parameters& parameters) {
    static const std::map<std::string, Answer (Session::*)(const Parameters&)> handlers{
        {"project", &Session::project},         {"document", &Session::document},     {"picture", &Session::picture},
        {"picture.png", &Session::picture_png}, {"buffer.png", &Session::buffer_png}, {"sound", &Session::sound},
    };
    const auto handler = handlers.find(name);
    if (handler == handlers.end())
        return std::nullopt;
    const Lock held = lock();
    return answered([&] { return (this->*handler->second)(parameters); });
}

Answer Session::post(const std::string& name, const std::string& text) {
    static const std::map<std::string, Answer (Session::*)(const json&)> handlers{
        {"edit", &Session::edit}, {"undo", &Session::undo},       {"redo", &Session::redo},
        {"save", &Session::save}, {"resolve", &Session::resolve}, {"recover", &Session::recover},
    };
    const auto handler = handlers.find(name);
    if (handler == handlers.end() && name != "play")
        return refusal(status::not_found, "there is no " + name);
    const json body = json::parse(text, nullptr, false);
    if (!body.is_object())
        return refusal(status::bad_request, "the body is no JSON object");
    if (name == "play") // edits go on meanwhile
        return answered([&] { return play(); });
    const Lock held = lock();
    Answer answer = answered([&] { return (this->*handler->second)(body); });
    tell_notices();
    return answer;
}

const Document& Session::named(const std::string& name) const try {
    return workspace_.document(name);
} catch (const Refused& refused) {
    throw BadRequest(refused.what(), status::not_found);
}

/// What is not as it should be, until it is.
void Session::tell_notices() {
    json notices = json::array();
    if (!workspace_.trouble().empty())
        notices.push_back("Unsaved changes would not outlive a crash: " + workspace_.trouble());
    for (const std::string& each : {workspace_.away(), stage_.left_out()})
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

const Reading& Session::read(const Document& document) {
    Reading& reading = readings_[document.name];
    if (reading.revision == document.revision)
        return reading;
    reading.revision = document.revision;
    const KindRow& row = row_of(document.kind);
    reading.stale = !(row.packed ? show_packed(document, reading) : show_installed(document, reading));
    if (!reading.stale)
        reading.description = row.describe(document.text, document.name);
    return reading;
}

/// Puts what a source makes on the stage; false when it makes nothing.
bool Session::show_packed(const Document& document, Reading& reading) {
    SourceCheck checked = check(document.file, document.text);
    reading.faults = std::move(checked.faults);
    if (!checked.readable)
        return false;
    if (const std::string reason = stage_.put(checked.screen); !reason.empty())
        complain(reason);
    reading.screen = std::move(checked.screen);
    return true;
}

/// The same for a text that the program reads itself.
bool Session::show_installed(const Document& document, Reading& reading) {
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
        const auto put = stage_.put_file(name, *bytes);
        if (!put)
            complain(put.reason());
        else if (*put && renderer_ && name == path::buffer_list)
            load_pictures();
        for (std::size_t i = 0; i < languages.size(); ++i)
            if (name == language_file_name(languages[i], path::text_windows)) {
                windows_[i] = {};
                read_text_windows(*bytes, windows_[i]);
            }
    }
    return true;
}

const json& Session::json_of(const Document& document) {
    return told_[document.name] = document_json(document, read(document), windows_);
}

/// `page` has asked for it, and knows.
void Session::tell_change(const Document& document, const std::string& page) {
    ++changes_;
    news_.notify_all();
    events_.tell("document", json{{"name", document.name}, {"revision", document.revision}, {"page", page}}.dump());
}

void Session::follow(const std::set<std::string>& paths) {
    const Lock held = lock();
    sources_changed(workspace_.take_disk_changes());
    bool kept = false, others = false;
    for (const std::string& path : paths) {
        const bool source = fs::path(path).parent_path() == screens_folder() || stage_.is_in_step(path);
        others = others || !source;
        kept = kept || (!source && is_kept(folder(), path));
    }
    if (others)
        files_changed(kept);
    tell_notices();
}

void Session::sources_changed(const std::vector<std::string>& names) {
    bool other_ones = false;
    for (const std::string& name : names) {
        const auto document = workspace_.documents().find(name);
        const bool is_gone = document == workspace_.documents().end();
        other_ones = other_ones || is_gone || !readings_.contains(name);
        if (is_gone) {
            readings_.erase(name);
        } else {
            read(document->second);
            tell_change(document->second);
        }
    }
    if (other_ones) {
        stage_.begin_anew();
        for (auto& [name, reading] : readings_)
            reading.revision = -1;
        files_changed(false);
    } else if (other_pictures_) {
        tell_files();
    }
}

/// Buffers are there with the next picture.
void Session::load_pictures() {
    renderer_->forget();
    static_cast<void>(renderer_->draw({})); // those that are asked for tell their faults
    other_pictures_ = true;
}

/// Pages ask again for what pictures are made of.
void Session::tell_files() {
    other_pictures_ = false;
    events_.tell("files", "{}");
}

void Session::files_changed(bool kept_ones) {
    stage_.follow();
    if (kept_ones) {
        fonts_ = load_measuring_fonts();
        renderer_->forget();
        for (auto& [name, reading] : readings_)
            reading.revision = -1; // aligned texts may be elsewhere
    }
    for (const auto& [name, document] : workspace_.documents())
        read(document);
    ++changes_;
    news_.notify_all();
    tell_files();
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
