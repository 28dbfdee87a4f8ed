// The screen editor as its page meets it: a picture, and a change until its picture is there, over the connection.
#include "figure.h"

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace vcc::bench {

namespace {

using nlohmann::json;

constexpr double picture_limit_us = 20'000, change_limit_us = 50'000;

/// An editor of the scratch copy of the installation, which is the working folder, with a copy of the sources.
class Editor {
public:
    Editor() {
        namespace fs = std::filesystem;
        const fs::path screens = "screens-of-the-editor";
        fs::remove_all(screens);
        fs::remove_all("state-of-the-editor"); // or it asks about the changes of the editor before
        fs::copy(VELDOR_SOURCES "/game/screens", screens);
        // Its own number comes first: the shell becomes the editor.
        const std::string command = "XDG_STATE_HOME=$PWD/state-of-the-editor; export XDG_STATE_HOME; echo $$; "
                                    "exec '" VELDOR_KIT "' edit . --no-browser --screens " +
                                    screens.string();
        output_.reset(::popen(command.c_str(), "r"));
        process_ = std::atoi(line().c_str());
        const std::string address = line();
        const std::size_t path = address.find('/', std::string_view("http://").size());
        if (path == std::string::npos)
            return;
        base_ = address.substr(path);
        client_ = std::make_unique<httplib::Client>(address.substr(0, path));
        client_->set_keep_alive(true);
        client_->set_tcp_nodelay(true);
    }
    ~Editor() {
        if (process_ > 0)
            ::kill(process_, SIGTERM);
    }
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    bool picture(const std::string& view) {
        if (!client_)
            return false;
        const auto answer = client_->Get(base_ + "picture?view=" + view);
        return answer && answer->status == 200 && answer->body.size() == 800u * 600 * 4;
    }

    /// Moves a slot by a pixel, to and fro.
    bool move(const char* document, int slot) {
        const json body{{"name", document},
                        {"revision", revision_},
                        {"merge", "drag"},
                        {"operations", {{{"do", "move"}, {"of", {{{"slot", slot}}}}, {"dx", step_}, {"dy", 0}}}}};
        step_ = -step_;
        if (!client_)
            return false;
        const auto answer = client_->Post(base_ + "edit", body.dump(), "application/json");
        const json changed = answer ? json::parse(answer->body, nullptr, false) : json();
        if (!changed.is_object())
            return false;
        // 409 tells the number of the text that is there
        revision_ = (answer->status == 409 ? changed["document"] : changed).value("revision", 0);
        return answer->status == 200;
    }

private:
    struct Closer {
        void operator()(std::FILE* file) const noexcept { ::pclose(file); }
    };

    std::string line() {
        char text[200] = "";
        if (!output_ || !std::fgets(text, sizeof text, output_.get()))
            return {};
        return std::string(text).substr(0, std::string_view(text).find('\n'));
    }

    std::unique_ptr<std::FILE, Closer> output_; ///< ends with the process, which the destructor asks to end
    std::unique_ptr<httplib::Client> client_;
    std::string base_;
    std::int64_t revision_ = 0;
    int process_ = 0, step_ = 1;
};

void measure_picture(benchmark::State& state, const std::string& view) {
    Editor editor;
    measure(state, picture_limit_us, 1, [&] {
        if (!editor.picture(view))
            state.SkipWithError("there is no picture");
    });
}

void measure_change(benchmark::State& state, const char* document, int slot, const std::string& view) {
    Editor editor;
    editor.move(document, slot); // refused; the number of the text is known from here on
    measure(state, change_limit_us, 1, [&] {
        if (!editor.move(document, slot) || !editor.picture(view))
            state.SkipWithError("the change does not show");
    });
}

void editor_picture_menu(benchmark::State& state) {
    measure_picture(state, "menu");
}
VELDOR_FIGURE(editor_picture_menu);

void editor_picture_options(benchmark::State& state) {
    measure_picture(state, "options&module=1&row=2");
}
VELDOR_FIGURE(editor_picture_options);

void editor_change_menu(benchmark::State& state) {
    measure_change(state, "vcc", 5, "menu");
}
VELDOR_FIGURE(editor_change_menu);

void editor_change_options(benchmark::State& state) {
    measure_change(state, "vcc_options", 44, "options&module=1&row=2");
}
VELDOR_FIGURE(editor_change_options);

} // namespace

} // namespace vcc::bench
