// What every fuzz target needs: the graphics library without a display, a scratch folder in memory, and libFuzzer's
// entry; it hands every input to the target's own one_input().
#pragma once

#include "core/handles.h"
#include "text/fonts.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <unistd.h>

namespace vcc::fuzz {

/// One for the whole process; the folder is removed at its end.
class World {
public:
    World() {
        std::filesystem::create_directories(folder_);
        std::filesystem::current_path(folder_);
        set_uformat(U_ASCII);
        install_allegro(SYSTEM_NONE, &errno, nullptr);
        set_color_depth(32);
        set_config_data("\n", 1);
    }
    ~World() {
        release_fonts();
        std::error_code ignored;
        std::filesystem::current_path("/", ignored);
        std::filesystem::remove_all(folder_, ignored);
    }

    static void write(const std::filesystem::path& name, std::string_view bytes) {
        if (name.has_parent_path())
            std::filesystem::create_directories(name.parent_path());
        std::ofstream(name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

private:
    static std::filesystem::path memory() {
        return std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
    }
    const std::filesystem::path folder_ = memory() / ("veldor-fuzz-" + std::to_string(::getpid()));
};

/// Ends the run with this input as its finding.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}

/// The display's 800 x 600 pixels, with the fonts to write on it.
inline BITMAP* page_with_fonts() {
    static const BitmapPtr page = [] {
        std::filesystem::create_directory("fonts");
        for (const auto& [from, to] : {std::pair{"Sans", "arial"}, {"Mono", "cour"}})
            std::filesystem::copy_file(std::string("/usr/share/fonts/truetype/liberation/Liberation") + from +
                                           "-Regular.ttf",
                                       std::string("fonts/") + to + ".ttf");
        require(load_fonts("fonts"));
        configure_fonts();
        select_font(0);
        return BitmapPtr(create_bitmap(800, 600));
    }();
    return page.get();
}

void one_input(std::string_view input);

} // namespace vcc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vcc::fuzz::World world;
    vcc::fuzz::one_input({reinterpret_cast<const char*>(data), size});
    return 0;
}
