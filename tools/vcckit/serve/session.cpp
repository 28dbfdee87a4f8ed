#include "serve/session.h"

#include "installation.h"
#include "latin1.h"
#include "source_values.h"

#include "platform/files.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace vcc::kit::edit {

namespace fs = std::filesystem;
using nlohmann::json;

Answer refusal(int status, const std::string& reason) {
    return {.status = status, .body = json{{"error", reason}}.dump(-1, ' ', false, json::error_handler_t::replace)};
}

namespace {

/// The names that a source gives to numbers.
std::map<Meaning, std::map<std::string, std::int64_t>> names_in(const std::string& text) {
    std::map<Meaning, std::map<std::string, std::int64_t>> names;
    const toml::parse_result source = toml::parse(text);
    const toml::table* const tables = source ? source.table()["names"].as_table() : nullptr;
    if (!tables)
        return names;
    for (const auto& [word, table] : *tables)
        if (const auto meaning = meaning_of_word(word.str()); meaning && table.is_table())
            for (const auto& [name, number] : *table.as_table())
                if (const auto value = number.value<std::int64_t>())
                    names[*meaning][std::string(name.str())] = *value;
    return names;
}

/// A window file of its own belongs to the language in whose folder it is; one among the sources to both.
bool serves(const DocumentState& document, const fs::path& installation, const LanguageRow& language) {
    const auto file_of = [&](const LanguageRow& row) {
        const fs::path name =
            fs::path("tools/language") / std::string(row.folder) / (std::string(row.prefix) + path::text_windows);
        return platform::resolve_path((installation / name).string());
    };
    if (std::ranges::none_of(languages, [&](const LanguageRow& row) { return file_of(row) == document.file; }))
        return true;
    return file_of(language) == document.file;
}

void complain(const std::string& reason) {
    std::fprintf(stderr, "vcckit: %s\n", reason.c_str());
}

} // namespace

Result<std::unique_ptr<Session>> Session::open(const std::string& folder, const std::string& screens) {
    auto workspace = Workspace::open(folder, screens);
    if (!workspace)
        return Failure{workspace.reason()};
    if (!(*workspace)->trouble().empty())
        complain("unsaved changes would not outlive a crash: " + (*workspace)->trouble());
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
    reading.names = names_in(document.text);
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
        const std::string name = "tools/language/" + std::string(languages[i].folder) + "/" +
                                 std::string(languages[i].prefix) + path::text_windows;
        if (const auto put = stage_->put_file(name, *bytes); !put)
            complain(put.reason());
    }
}

json Session::json_of(const DocumentState& document) {
    return document_json(document, read(document), windows_);
}

void Session::tell_change(const DocumentState& document) {
    ++changes_;
    news_.notify_all();
    events_.tell("document", json{{"name", document.name}, {"revision", document.revision}}.dump());
}

void Session::sources_changed() {
    const Lock held = lock();
    for (const std::string& name : workspace_->take_disk_changes())
        if (const auto document = workspace_->document(name)) {
            read(*document);
            tell_change(*document);
        }
}

void Session::files_changed(bool kept_ones) {
    const Lock held = lock();
    stage_->follow();
    if (kept_ones) {
        fonts_ = load_measuring_fonts();
        renderer_->forget();
        for (auto& [name, reading] : readings_)
            reading.revision = -1; // aligned texts may be elsewhere
        for (const DocumentState& document : workspace_->documents())
            read(document);
    }
    ++changes_;
    news_.notify_all();
    events_.tell("files", "{}");
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
