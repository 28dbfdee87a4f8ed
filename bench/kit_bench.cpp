// The tool of those who make installations: whole commands, from the start of the process to its end.
#include "figure.h"

#include <cstdlib>
#include <string>

namespace vcc::bench {

namespace {

std::string built_installation() {
    const char* const named = std::getenv("VELDOR_INSTALLATION");
    return named ? named : VELDOR_BUILT_INSTALLATION;
}

void measure_command(benchmark::State& state, double limit_ms, const std::string& arguments) {
    const std::string command = std::string("exec '" VELDOR_KIT "' ") + arguments + " >/dev/null";
    measure(state, limit_ms * 1000, 1, [&] {
        if (std::system(command.c_str()) != 0)
            state.SkipWithError("the command fails");
    });
}

void vcckit_check(benchmark::State& state) {
    measure_command(state, 150, "check '" + built_installation() + "'");
}
VELDOR_FIGURE(vcckit_check);

/// Into the scratch copy of the installation, which is the working folder.
void vcckit_pack(benchmark::State& state) {
    measure_command(state, 15, "pack '" VELDOR_SOURCES "/game/screens/vcc_options.toml' -o .");
}
VELDOR_FIGURE(vcckit_pack);

} // namespace

} // namespace vcc::bench
