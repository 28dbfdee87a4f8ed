// The server of the screen editor: what it refuses, what it shows, and what it leaves alone.
#include "game_folder.h"
#include "vcckit/serve/server.h"
#include "vcckit/serve/session.h"

#include <httplib.h>

#include <optional>
#include <thread>

namespace vcc::kit::edit {
namespace {

namespace fs = std::filesystem;
using httplib::Headers;
using nlohmann::json;

/// A served installation with its sources in the folder screens.
class Serve : public test::GameFolder {
protected:
    Serve() {
        fs::copy(VELDOR_SOURCE_DIR "/game/screens", "screens");
        ::setenv("XDG_STATE_HOME", (folder.path() / "state").c_str(), 1);
        session_.emplace(folder.path().string(), "");
    }
    void SetUp() override {
        server_.emplace(*session_);
        ASSERT_EQ(server_->bind(0), "");
        const std::string address = server_->address();
        const std::size_t path = address.find('/', 7);
        origin_ = address.substr(0, path);
        base_ = address.substr(path);
        threads_.emplace_back([this] { server_->run(); });
        threads_.emplace_back([this] { session_->check_behind(); });
        client_.emplace(origin_);
    }
    ~Serve() override {
        session_->stop();
        server_->stop();
        for (std::thread& thread : threads_)
            thread.join();
        server_.reset();
        session_.reset();
    }

    json get(const std::string& name) {
        const auto response = client_->Get(base_ + name);
        return response ? json::parse(response->body, nullptr, false) : json();
    }
    httplib::Result post(const std::string& name, const json& body) {
        return client_->Post(base_ + name, body.dump(), "application/json");
    }
    std::string picture(const std::string& query) {
        const auto response = client_->Get(base_ + "picture?" + query);
        return response && response->status == 200 ? response->body : "";
    }

    /// What an editor may write: sources, packed files, settings and logs.
    std::string files() const {
        std::string all;
        for (const char* const place : {"screens", "tools", "data"})
            for (const auto& each : fs::recursive_directory_iterator(folder.path() / place))
                if (each.is_regular_file())
                    all += each.path().string() + "\n" + read_file(each.path().string()).value_or("");
        return all;
    }

    std::optional<Session> session_;
    std::optional<Server> server_;
    std::optional<httplib::Client> client_;
    std::string origin_, base_;
    std::vector<std::thread> threads_;
};

TEST_F(Serve, NothingIsCompressed) {
    for (const char* const name : {"", "main.js", "base.css", "project", "document?name=vcc", "nothing"}) {
        const auto response = client_->Get(base_ + name, Headers{{"Accept-Encoding", "br, gzip, deflate"}});
        ASSERT_TRUE(response) << name;
        EXPECT_EQ(response->get_header_value("Content-Encoding"), "") << name;
    }
}

TEST_F(Serve, RefusedRequestsSayWhyAndChangeNothing) {
    const std::string before = files();
    const json document = get("document?name=vcc");
    const std::string json_type = "application/json";
    const std::string save = base_ + "save", edit_path = base_ + "edit";
    const std::string key = base_.substr(1, base_.size() - 2), wrong_key = std::string(key.size(), '0');
    const auto change = [](const char* what, json value) {
        json body{{"name", "vcc"},
                  {"revision", 1},
                  {"operations", {{{"do", "move"}, {"of", {{{"slot", 5}}}}, {"dx", 1}, {"dy", 0}}}}};
        body[json::json_pointer(what)] = std::move(value);
        return body.dump();
    };
    const json french{{"do", "unset"}, {"of", {{{"slot", 5}}}}, {"field", "row"}, {"language", "fr"}};
    const struct {
        const char *method, *why;
        std::string path;
        Headers headers;
        std::string body, type;
        int status;
    } requests[] = {
        // who asks
        {"GET", "key", "/", {}, "", "", 403},
        {"GET", "key", "/" + wrong_key + "/project", {}, "", "", 403},
        {"GET", "key", "/" + key + "0/project", {}, "", "", 403},
        {"GET", "key", "//" + key + "/project", {}, "", "", 403},
        {"POST", "key", "/" + wrong_key + "/save", {}, "{}", json_type, 403},
        {"GET", "another name", base_ + "project", {{"Host", "evil.example"}}, "", "", 403},
        {"POST", "origin", save, {{"Origin", "http://127.0.0.1:1"}}, "{}", json_type, 403},
        {"GET", "origin", base_ + "project", {{"Sec-Fetch-Site", "cross-site"}}, "", "", 403},
        // how
        {"PUT", "GET and POST", save, {}, "{}", json_type, 405},
        {"POST", "application/json", save, {}, "{}", "text/plain", 415},
        {"POST", "2 MiB", save, {}, std::string((2u << 20) + 1, ' '), json_type, 413},
        {"GET", "there is no save", save, {}, "", "", 404},
        {"POST", "there is no project", base_ + "project", {}, "{}", json_type, 404},
        // where
        {"GET", "there is no", base_ + "../../etc/passwd", {}, "", "", 404},
        {"GET", "there is no", base_ + "%2e%2e%2f%2e%2e%2fetc%2fpasswd", {}, "", "", 404},
        {"GET", "no document", base_ + "document?name=../screens/vcc", {}, "", "", 404},
        {"GET", "view is", base_ + "picture?view=attic", {}, "", "", 400},
        {"GET", "language is", base_ + "picture?view=menu&language=fr", {}, "", "", 400},
        {"GET", "hover is", base_ + "picture?view=menu&hover=200", {}, "", "", 400},
        {"GET", "row is", base_ + "picture?view=options&row=-1", {}, "", "", 400},
        {"GET", "no option row", base_ + "picture?view=options&row=10", {}, "", "", 422},
        {"GET", "no slot", base_ + "picture.png?view=menu&pressed=199", {}, "", "", 422},
        {"GET", "number is", base_ + "buffer.png?number=25", {}, "", "", 400},
        {"GET", "empty", base_ + "buffer.png?number=9", {}, "", "", 404},
        {"GET", "number is", base_ + "sound?number=99999999999", {}, "", "", 400},
        {"GET", "names no file", base_ + "sound?number=150", {}, "", "", 404},
        // what
        {"POST", "no JSON object", save, {}, "{", json_type, 400},
        {"POST", "no JSON object", save, {}, std::string(100'000, '['), json_type, 400},
        {"POST", "name is", base_ + "undo", {}, "{}", json_type, 400},
        {"POST", "nothing to undo", base_ + "undo", {}, R"({"name":"vcc"})", json_type, 422},
        {"POST", "no document", base_ + "redo", {}, R"({"name":"attic"})", json_type, 422},
        {"POST", "take is", base_ + "recover", {}, R"({"take":1})", json_type, 400},
        {"POST", "choice is", base_ + "resolve", {}, R"({"name":"vcc","conflict":0})", json_type, 400},
        {"POST", "no program", base_ + "play", {}, "{}", json_type, 422},
        {"POST", "has changed", edit_path, {}, change("/revision", 2), json_type, 409},
        {"POST", "revision is", edit_path, {}, change("/revision", 1.5), json_type, 400},
        {"POST", "revision is", edit_path, {}, change("/revision", 18446744073709551615u), json_type, 400},
        {"POST", "no document", edit_path, {}, change("/name", "attic"), json_type, 404},
        {"POST", "label is", edit_path, {}, change("/label", std::string(201, 'x')), json_type, 400},
        {"POST", "operations is", edit_path, {}, change("/operations", "move"), json_type, 400},
        {"POST", "known \"do\"", edit_path, {}, change("/operations/0", json::array()), json_type, 400},
        {"POST", "slot is", edit_path, {}, change("/operations/0/of/0/slot", 200), json_type, 400},
        {"POST", "look is", edit_path, {}, change("/operations/0/of/0/look", "shiny"), json_type, 400},
        {"POST", "dx is", edit_path, {}, change("/operations/0/dx", 1001), json_type, 400},
        {"POST", "field is", edit_path, {}, change("/operations/0/do", "set"), json_type, 400},
        {"POST", "language is", edit_path, {}, change("/operations/0", french), json_type, 400},
        {"POST", "slot", edit_path, {}, change("/operations/0/of/0/slot", 199), json_type, 422},
    };
    for (const auto& [method, why, path, headers, body, type, wanted] : requests) {
        httplib::Request request;
        request.method = method;
        request.path = path;
        request.headers = headers;
        request.body = body;
        if (!type.empty())
            request.set_header("Content-Type", type);
        httplib::Client client(origin_); // a connection of its own: the server may end it
        const auto response = client.send(request);
        ASSERT_TRUE(response) << method << " " << path;
        EXPECT_EQ(response->status, wanted) << method << " " << path << " " << body.substr(0, 200);
        const json answer = json::parse(response->body, nullptr, false);
        EXPECT_NE(answer.value("error", "").find(why), std::string::npos) << path << ": " << response->body;
        EXPECT_EQ(response->get_header_value("X-Frame-Options"), "DENY") << path;
    }
    EXPECT_EQ(get("document?name=vcc"), document);
    EXPECT_TRUE(files() == before) << "a file has changed";
}

TEST_F(Serve, TheFrameOfATextIsItsBox) {
    const json document = get("document?name=vcc_options");
    int boxes = 0;
    for (const json& slot : document["slots"]) {
        const json& shown = slot["languages"]["en"];
        const json& values = shown["values"];
        EXPECT_EQ(shown["boxed"], values["graphic"] == 0 && values["box_width"] != 0 && values["box_height"] != 0);
        if (!shown["boxed"].get<bool>())
            continue;
        ++boxes;
        EXPECT_EQ(shown["rect"][2], values["box_width"]) << slot["index"];
        EXPECT_EQ(shown["rect"][3], values["box_height"]) << slot["index"];
    }
    EXPECT_GT(boxes, 0);
}

/// An edit is answered with what differs, and with the part of the picture that differs.
TEST_F(Serve, AnEditIsAnsweredWithWhatDiffers) {
    const json whole = get("document?name=vcc");
    const auto first = client_->Get(base_ + "picture?view=menu&language=en&keep=1");
    const auto answer =
        post("edit", {{"name", "vcc"},
                      {"revision", whole["revision"]},
                      {"view", {{"view", "menu"}, {"language", "en"}}},
                      {"have", std::stoi(first->get_header_value("X-Number"))},
                      {"operations", {{{"do", "move"}, {"of", {{{"slot", 5}}}}, {"dx", 20}, {"dy", 0}}}}});
    ASSERT_EQ(answer->status, 200);
    const std::size_t end = answer->body.find('\n');
    const json told = json::parse(answer->body.substr(0, end)), now = get("document?name=vcc");
    EXPECT_EQ(told["since"], whole["revision"]);
    EXPECT_LT(3 * end, now.dump().size());
    int changed = 0;
    for (const auto& [name, list] : told["lists"].items())
        for (const auto& [index, record] : list["changed"].items()) {
            EXPECT_EQ(record, now[name][std::stoul(index)]);
            EXPECT_NE(record, whole[name][std::stoul(index)]);
            ++changed;
        }
    EXPECT_GT(changed, 0);
    const std::vector<int> rect = told["picture"]["rect"];
    const std::string pixels = answer->body.substr(end + 1), after = picture("view=menu&language=en");
    ASSERT_EQ(pixels.size(), 4U * static_cast<unsigned>(rect[2] * rect[3]));
    EXPECT_LT(rect[2] * rect[3], 300 * 100);
    std::string patched = first->body;
    for (int y = 0; y < rect[3]; ++y)
        patched.replace(4U * static_cast<unsigned>((rect[1] + y) * 800 + rect[0]), 4U * static_cast<unsigned>(rect[2]),
                        pixels, 4U * static_cast<unsigned>(y * rect[2]), 4U * static_cast<unsigned>(rect[2]));
    EXPECT_TRUE(patched == after);
}

} // namespace
} // namespace vcc::kit::edit
