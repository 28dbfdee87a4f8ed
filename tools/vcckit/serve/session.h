// An installation in the editor: the working texts, the stage that shows them, and the renderer that draws it.
#pragma once

#include "vcckit/draw/render.h"
#include "vcckit/edit/workspace.h"
#include "vcckit/serve/document_json.h"
#include "vcckit/serve/events.h"
#include "vcckit/serve/requests.h"
#include "vcckit/serve/stage.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vcc::kit {
class Library;
}

namespace vcc::kit::edit {

/// The parameters of a request's address.
using Parameters = std::map<std::string, std::string>;

/// The stage becomes the working folder of the process. Requests may come from any thread; the graphics library works
/// for one at a time.
class Session {
public:
    /// `screens` is empty or the folder of the sources. Throws Refused.
    Session(const std::string& folder, const std::string& screens);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const std::string& folder() const { return workspace_.folder(); }
    const std::string& screens_folder() const { return workspace_.screens_folder(); }
    const std::string& files_folder() const { return workspace_.files_folder(); }
    Events& events() { return events_; }

    /// What the page asks for by GET; nothing if there is no such thing.
    std::optional<Answer> get(const std::string& name, const Parameters& parameters);

    /// What it asks for by POST, with a JSON object.
    Answer post(const std::string& name, const std::string& body);

    /// Files of the folders have changed: sources, or what pictures are made of.
    void follow(const std::set<std::string>& paths);

    /// Checks the whole stage behind the changes, until stop().
    void check_behind();
    void stop();

private:
    using Lock = std::unique_lock<std::mutex>;

    Lock lock();

    Answer project(const Parameters& parameters);
    Answer document(const Parameters& parameters);
    Answer picture(const Parameters& parameters);
    Answer picture_png(const Parameters& parameters);
    Answer buffer_png(const Parameters& parameters);
    Answer sound(const Parameters& parameters);

    Answer edit(const nlohmann::json& body);
    Answer undo(const nlohmann::json& body);
    Answer redo(const nlohmann::json& body);
    Answer save(const nlohmann::json& body);
    Answer resolve(const nlohmann::json& body);
    Answer recover(const nlohmann::json& body);
    Answer play();

    const Document& named(const std::string& name) const;
    const Reading& read(const Document& document);
    bool show_packed(const Document& document, Reading& reading);
    bool show_installed(const Document& document, Reading& reading);
    void tell_change(const Document& document, const std::string& page = {});
    void tell_notices();
    void sources_changed(const std::vector<std::string>& names);
    void files_changed(bool kept_ones);
    void load_pictures();
    void tell_files();
    const nlohmann::json& json_of(const Document& document);
    Answer changed(const Document& document, const nlohmann::json& body);
    std::string add_picture(const nlohmann::json& body, nlohmann::json& told);
    SourceCheck check(const std::string& file, const std::string& text) const;

    struct Drawn {
        BitmapPtr picture;
        std::int64_t revision = 0;
    };
    Drawn draw(const Parameters& parameters);
    std::int64_t keep_shown(const std::string& rgba);

    void check_once(Lock& held);
    nlohmann::json checked_fault_json(const Fault& fault);

    Workspace workspace_;
    Stage stage_;
    std::unique_ptr<Library> library_;
    std::unique_ptr<Renderer> renderer_;
    Events events_;
    std::map<std::string, Reading> readings_;    ///< by document
    std::map<std::string, nlohmann::json> told_; ///< documents as pages got them last
    /// Pictures that pages have got, by number, red, green, blue and 255 of each pixel: of the next one they get only
    /// what differs.
    std::map<std::int64_t, std::string> shown_;
    WindowSets windows_;
    bool fonts_ = false;          ///< they are loaded
    bool other_pictures_ = false; ///< pages do not know yet
    std::string notices_;         ///< that were told
    std::mutex player_mutex_;
    int player_ = 0; ///< process of the program that was started
    const std::int64_t session_ =
        std::chrono::system_clock::now().time_since_epoch().count(); ///< another one each time

    std::mutex mutex_;
    std::condition_variable news_;
    std::atomic<int> waiting_ = 0; ///< requests
    std::uint64_t changes_ = 1, checked_ = 0;
    bool stopped_ = false;
};

} // namespace vcc::kit::edit
