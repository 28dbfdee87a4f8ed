// pack_screens INSTALLATION SOURCE...: packs sources of the built-in installation, so that its build does not wait for
// the whole tool. "vcckit check" looks at the result.
#include "vcckit/check/installation.h"
#include "vcckit/source/packed_screen.h"

#include "core/files.h"
#include "platform/files.h"
#include "text/fonts.h"

#include <cstdio>

using namespace vcc;
using namespace vcc::kit;

namespace {

ScreenSource read_source(const std::string& text, const std::string& installation) {
    const platform::FolderVisit visit(installation);
    const Library library;
    set_config_file(path::settings);
    const bool fonts = load_fonts(path::fonts);
    configure_fonts();
    return read_screen_source(text, measure_of_fonts(fonts));
}

/// Returns what went wrong, else an empty text.
std::string pack(const std::string& file, const std::string& installation) {
    const auto text = read_file(file);
    if (!text)
        return file + " " + text.reason();
    ScreenSource source = read_source(*text, installation);
    if (source.screen.name.empty())
        source.screen.name = platform::name_of(platform::system_path(file).stem());
    std::string told;
    for (Fault fault : source.faults) {
        fault.file = file;
        told += text_of_fault(fault, false) + "\n";
    }
    if (!told.empty())
        return told;
    FileSet files;
    std::vector<std::string> written;
    told = write_packed_screen(source.screen, installation, files, written);
    return told.empty() ? files.commit() : told;
}

} // namespace

int main(int count, char** arguments) {
    for (int i = 2; i < count; ++i)
        if (const std::string told = pack(arguments[i], arguments[1]); !told.empty()) {
            std::fprintf(stderr, "%s\n", told.c_str());
            return 1;
        }
}
