#include "vcckit/serve/server.h"

#include "vcckit/edit/unsaved.h"
#include "vcckit/files/embedded_files.h"

#include "core/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <sstream>

#include <sys/random.h>

namespace vcc::kit::edit {

namespace {

/// Takes the same time however much of them is the same.
bool same_key(const std::string& one, const std::string& other) {
    int differences = one.size() != other.size() || one.empty() ? 1 : 0;
    for (std::size_t i = 0; i < std::min(one.size(), other.size()); ++i)
        differences |= one[i] ^ other[i];
    return differences == 0;
}

constexpr const char* host = "127.0.0.1";
constexpr std::size_t body_limit = 2u << 20;
constexpr std::size_t drain_limit = 64u << 20; ///< is read and forgotten, so that the answer is heard
constexpr const char* too_large_reason = "the body is larger than 2 MiB";
constexpr std::size_t threads = 256; ///< one for each connection, also of somebody who is slow and has no key
constexpr time_t keep_alive_s = 1;   ///< for as long does the end of the server wait for a silent page
constexpr std::chrono::seconds comment_time{15};

std::string new_key() {
    std::array<unsigned char, 16> bytes{};
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        return {};
    std::string key;
    constexpr std::string_view digits = "0123456789abcdef";
    for (const unsigned char byte : bytes) {
        key += digits[byte / digits.size()];
        key += digits[byte % digits.size()];
    }
    return key;
}

/// For everything that is sent.
const httplib::Headers safe_headers{
    {"Content-Security-Policy", "default-src 'self'; img-src 'self' blob: data:; frame-ancestors 'none'"},
    {"X-Frame-Options", "DENY"},
    {"X-Content-Type-Options", "nosniff"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"Cache-Control", "no-store"},
    {"Referrer-Policy", "no-referrer"},
};

/// Written with a capital, which browsers ignore: the server's library knows "text/" by its letters, and would compress
/// each script anew for 10 ms with Brotli. Answer's type has a charset for the same reason.
const char* type_of(std::string_view file) {
    constexpr std::pair<std::string_view, const char*> types[] = {
        {".html", "Text/html; charset=utf-8"},
        {".js", "Text/javascript; charset=utf-8"},
        {".css", "Text/css; charset=utf-8"},
    };
    for (const auto& [ending, type] : types)
        if (file.ends_with(ending))
            return type;
    return "application/octet-stream";
}

void send(httplib::Response& response, Answer answer) {
    response.status = answer.status;
    for (const auto& [name, value] : answer.headers)
        response.set_header(name, value);
    response.body = std::move(answer.body);
    response.set_header("Content-Type", answer.type);
}

} // namespace

/// Why a request gets nothing, whatever it asks for.
std::optional<Answer> Server::refuse(const httplib::Request& request) const {
    const std::string own = std::string(host) + ":" + std::to_string(port_),
                      local = "localhost:" + std::to_string(port_);
    const std::string asked = request.get_header_value("Host");
    if (request.get_header_value_count("Host") != 1 || (asked != own && asked != local))
        return refusal(status::forbidden, "this server has another name");
    const std::string site = request.get_header_value("Sec-Fetch-Site");
    if ((request.has_header("Origin") && request.get_header_value("Origin") != "http://" + asked) ||
        (!site.empty() && site != "same-origin" && site != "none"))
        return refusal(status::forbidden, "a page of another origin asks");
    const std::size_t end = request.path.find('/', 1);
    if (end == std::string::npos || !same_key(key_, request.path.substr(1, end - 1)))
        return refusal(status::forbidden, "the key is wrong: use the address that vcckit edit has printed");
    if (request.method != "GET" && request.method != "POST")
        return refusal(status::wrong_method, "GET and POST are answered");
    const std::string type = request.get_header_value("Content-Type");
    if (request.method == "POST" && type.substr(0, type.find(';')) != "application/json")
        return refusal(status::wrong_type, "the body must be application/json");
    return std::nullopt;
}

Answer Server::answer_get(const std::string& name, const httplib::Request& request) {
    if (auto answer = session_.get(name, {request.params.begin(), request.params.end()})) // the first of several
        return std::move(*answer);
    const std::string_view wanted = name.empty() ? std::string_view("index.html") : name;
    for (const EmbeddedFile& file : editor_files())
        if (file.path == wanted)
            return {.type = type_of(file.path), .body = std::string(file.bytes)};
    return refusal(status::not_found, "there is no " + name);
}

Answer Server::answer_post(const std::string& name, const httplib::ContentReader& reader) {
    std::string text;
    std::size_t sent = 0;
    const bool is_whole = reader([&](const char* bytes, std::size_t size) {
        if ((sent += size) <= body_limit) // a body in chunks does not say how large it is
            text.append(bytes, size);
        return sent <= drain_limit;
    });
    if (sent > body_limit)
        return refusal(status::too_large, too_large_reason);
    if (!is_whole)
        return refusal(status::bad_request, "the request cannot be read");
    return session_.post(name, text);
}

void Server::send_events(httplib::Response& response) {
    Events& events = session_.events();
    response.set_chunked_content_provider("text/event-stream", [&events, listener = events.listen(), begun = false](
                                                                   std::size_t, httplib::DataSink& sink) mutable {
        // The first answer tells the page that it hears.
        const auto news = begun ? events.next(listener, comment_time) : std::optional<std::string>(": hello\n\n");
        begun = true;
        if (!news) {
            sink.done();
            return true;
        }
        return sink.write(news->data(), news->size());
    });
}

Server::Server(Session& session) : session_(session), key_(new_key()) {
    http_.new_task_queue = [] { return new httplib::ThreadPool(threads); };
    http_.set_default_headers(safe_headers);
    http_.set_payload_max_length(drain_limit);
    http_.set_keep_alive_timeout(keep_alive_s);
    http_.set_keep_alive_max_count(1000); // a page asks for some sixty files
    http_.set_tcp_nodelay(true);
    http_.set_socket_options([](socket_t socket) { // no second server may listen on the same port
        const int yes = 1;
        ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    http_.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
        auto refused = refuse(request);
        if (!refused)
            return httplib::Server::HandlerResponse::Unhandled;
        send(response, std::move(*refused));
        return httplib::Server::HandlerResponse::Handled;
    });
    http_.Get(".*", [this](const httplib::Request& request, httplib::Response& response) {
        const std::string name = name_in(request);
        if (name == "events")
            send_events(response);
        else
            send(response, answer_get(name, request));
    });
    http_.Post(".*",
               [this](const httplib::Request& request, httplib::Response& response,
                      const httplib::ContentReader& reader) { send(response, answer_post(name_in(request), reader)); });
    // What the library refuses by itself gets a reason, too.
    http_.set_error_handler(httplib::Server::Handler([](const httplib::Request&, httplib::Response& response) {
        if (response.body.empty())
            send(response,
                 refusal(response.status,
                         response.status == status::too_large ? too_large_reason : "the request cannot be read"));
    }));
}

std::string Server::bind(int port, const std::string& memory) {
    if (key_.empty())
        return std::string("the system has no random numbers: ") + std::strerror(errno);
    const std::string file = memory + "/address";
    std::istringstream kept(memory.empty() ? "" : read_file(file).value_or(""));
    std::string key;
    int wanted = 0;
    if (kept >> wanted >> key && key.size() == key_.size() && wanted > 0 && wanted < 65536 &&
        key.find_first_not_of("0123456789abcdef") == std::string::npos)
        key_ = key;
    else
        wanted = 0;
    if (port != 0)
        wanted = port;
    if (wanted != 0 && http_.bind_to_port(host, wanted))
        port_ = wanted;
    else if (port == 0)
        port_ = std::max(http_.bind_to_any_port(host), 0);
    if (port_ == 0)
        return "cannot listen on port " + std::to_string(port) + " of " + host + ": " + std::strerror(errno);
    if (!memory.empty()) // without it, the next address is another one
        put_quickly(file, std::to_string(port_) + " " + key_ + "\n", 0600);
    return {};
}

std::string Server::address() const {
    return "http://" + std::string(host) + ":" + std::to_string(port_) + "/" + key_ + "/";
}

} // namespace vcc::kit::edit
