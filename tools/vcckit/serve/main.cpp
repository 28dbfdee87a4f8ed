// vcckit-edit FOLDER SCREENS PORT BROWSER: the screen editor. "vcckit edit" starts it; SCREENS may be empty, BROWSER is
// 0 or 1.
#include "serve/changes.h"
#include "serve/server.h"
#include "serve/session.h"
#include "serve/start_process.h"

#include "core/text.h"
#include "platform/process.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <thread>

#include <signal.h>

namespace {

namespace fs = std::filesystem;
using namespace vcc::kit::edit;

constexpr int unusable = 2;

int complain(const std::string& reason) {
    std::fprintf(stderr, "vcckit: %s\n", reason.c_str());
    return unusable;
}

/// What is loaded once: fonts, pictures, sounds and their lists, settings.
bool is_kept(const fs::path& installation, const fs::path& path) {
    const std::string name = path.lexically_relative(installation).generic_string();
    return !name.starts_with("..") && !name.starts_with("tools/language/") && !name.starts_with("help/");
}

void follow(Session& session, const std::set<std::string>& changed) {
    const fs::path folder = session.folder();
    bool kept = false;
    session.sources_changed();
    for (const std::string& path : changed)
        kept = kept || (is_kept(folder, path) && fs::path(path).extension() != ".toml");
    session.files_changed(kept);
}

/// Requests to end come to one thread.
sigset_t block_requests() {
    sigset_t requests;
    sigemptyset(&requests);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&requests, signal);
    ::pthread_sigmask(SIG_BLOCK, &requests, nullptr);
    std::signal(SIGPIPE, SIG_IGN); // a page that goes away
    return requests;
}

int serve(Session& session, int port, bool browser, const sigset_t& requests) {
    // Watched from here on: what changes as soon as the address is known counts, and so does what came before.
    Changes changes({session.folder(), session.screens_folder()},
                    [&](const std::set<std::string>& changed) { follow(session, changed); });
    session.sources_changed();
    Server server(session);
    if (const std::string reason = server.bind(port); !reason.empty())
        return complain(reason);
    std::printf("%s\n", server.address().c_str());
    std::fflush(stdout);
    if (browser)
        if (const std::string reason = start_process({"xdg-open", server.address()}, "/"); !reason.empty())
            complain(reason); // the address can be opened by hand
    std::thread watcher([&] { changes.run(); }), checker([&] { session.check_behind(); }),
        answers([&] { server.run(); });
    int signal = 0;
    ::sigwait(&requests, &signal);
    server.stop();
    changes.stop();
    session.stop();
    for (std::thread* const thread : {&watcher, &checker, &answers})
        thread->join();
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5)
        return complain("vcckit-edit is started by vcckit edit");
    vcc::platform::prepare_heap(); // each picture takes and gives back megabytes
    const sigset_t requests = block_requests();
    const auto session = Session::open(argv[1], argv[2]);
    if (!session)
        return complain(session.reason());
    return serve(**session, vcc::to_number(argv[3]), std::string_view(argv[4]) == "1", requests);
}
