// The editor's server: pages on this machine that know the key, and nobody else.
#pragma once

#include "vcckit/serve/session.h"

#include <httplib.h>

#include <optional>
#include <string>

namespace vcc::kit::edit {

class Server {
public:
    explicit Server(Session& session);

    /// Takes a port of 127.0.0.1; 0 is any free one. Port and key are kept in a folder, when there is one, and taken
    /// again the next time, so that a page that is still open comes back. Empty, or why that is impossible.
    std::string bind(int port, const std::string& memory = {});

    /// Where the page is, with the key: "http://127.0.0.1:4711/0123456789abcdef0123456789abcdef/".
    std::string address() const;

    /// Answers requests until stop().
    void run() { http_.listen_after_bind(); }
    void stop() { http_.stop(); }

private:
    std::optional<Answer> refuse(const httplib::Request& request) const;
    Answer answer_get(const std::string& name, const httplib::Request& request);
    Answer answer_post(const std::string& name, const httplib::ContentReader& reader);
    void send_events(httplib::Response& response);
    std::string name_in(const httplib::Request& request) const { return request.path.substr(key_.size() + 2); }

    Session& session_;
    std::string key_;
    int port_ = 0;
    httplib::Server http_;
};

} // namespace vcc::kit::edit
