// vcckit-edit FOLDER SCREENS PORT BROWSER: the screen editor. "vcckit edit" starts it; SCREENS may be empty, BROWSER is
// 0 or 1.
#include "vcckit/edit/unsaved.h"
#include "vcckit/files/watch.h"
#include "vcckit/serve/server.h"
#include "vcckit/serve/session.h"
#include "vcckit/serve/start_process.h"
#include "vcckit/text/complain.h"

#include "core/text.h"
#include "platform/process.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <thread>

#include <signal.h>

namespace {

using namespace std::chrono_literals;
using namespace vcc::kit::edit;
using vcc::kit::complain;

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

/// The first request to end. What is going on then, a long check or a silent page, may take a moment to notice; after
/// that the process ends all the same, which loses nothing.
std::future<void> request_to_end(const sigset_t& requests) {
    std::promise<void> asked;
    std::future<void> future = asked.get_future();
    std::thread([requests, asked = std::move(asked)]() mutable {
        int signal = 0;
        ::sigwait(&requests, &signal);
        asked.set_value();
        std::this_thread::sleep_for(200ms);
        Stage::remove_own();
        std::_Exit(0);
    }).detach();
    return future;
}

int serve(Session& session, int port, bool browser, const std::future<void>& asked) {
    // Watched from here on: what changes as soon as the address is known counts, and so does what came before.
    vcc::kit::Watch watch({session.folder(), session.screens_folder(), session.files_folder()});
    session.follow({});
    Server server(session);
    if (const std::string reason = server.bind(port, state_folder(session.screens_folder())); !reason.empty())
        return complain(reason);
    std::printf("%s\n", server.address().c_str());
    std::fflush(stdout);
    std::jthread watcher([&] {
        for (auto changed = watch.wait(); !changed.empty(); changed = watch.wait())
            session.follow(changed);
    });
    std::jthread checker([&] { session.check_behind(); }), answers([&] { server.run(); });
    if (browser)
        if (const auto started = start_process({"xdg-open", server.address()}, "/"); !started)
            complain(started.reason()); // the address can be opened by hand
    asked.wait();
    server.stop();
    watch.stop();
    session.stop();
    return 0;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 5)
        return complain("vcckit-edit is started by vcckit edit");
    vcc::platform::prepare_heap(); // each picture takes and gives back megabytes
    const std::future<void> asked = request_to_end(block_requests());
    Session session(argv[1], argv[2]);
    return serve(session, vcc::to_number(argv[3]), std::string_view(argv[4]) == "1", asked);
} catch (const Refused& refused) {
    return complain(refused.what());
}
