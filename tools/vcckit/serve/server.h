// The editor's server: pages on this machine that know the key, and nobody else.
#pragma once

#include "vcckit/serve/session.h"

#include <memory>
#include <string>

namespace vcc::kit::edit {

class Server {
public:
    explicit Server(Session& session);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Takes a port of 127.0.0.1; 0 is any free one. Port and key are kept in a folder, when there is one, and taken
    /// again the next time, so that a page that is still open comes back. Empty, or why that is impossible.
    std::string bind(int port, const std::string& memory = {});

    /// Where the page is, with the key: "http://127.0.0.1:4711/0123456789abcdef0123456789abcdef/".
    std::string address() const;

    /// Answers requests until stop().
    void run();
    void stop();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace vcc::kit::edit
