// What every fuzz target needs: the graphics library without a display, and a scratch folder in memory where the input
// stands as a file.
#pragma once

#include "core/handles.h"
#include "core/layout.h"
#include "text/fonts.h"

#include <allegro.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <unistd.h>

namespace vcc::fuzz {

inline std::string_view as_text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// One for the whole process; the folder is removed at its end.
class World {
public:
    static World& start() {
        static World world;
        return world;
    }

    void write(const char* name, std::string_view bytes) const {
        std::ofstream(name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    void use_fonts() {
        if (fonts_)
            return;
        namespace fs = std::filesystem;
        fs::create_directory("fonts");
        for (const auto& [from, to] : {std::pair{"Sans", "arial"}, {"Mono", "cour"}})
            fs::copy_file(std::string("/usr/share/fonts/truetype/liberation/Liberation") + from + "-Regular.ttf",
                          std::string("fonts/") + to + ".ttf");
        fonts_ = load_fonts("VELDOR_VCC", "fonts");
        if (!fonts_)
            std::abort();
        configure_fonts("VELDOR_VCC");
        select_font(0);
    }

private:
    World() {
        namespace fs = std::filesystem;
        const fs::path memory = "/dev/shm";
        folder_ = (fs::is_directory(memory) ? memory : fs::temp_directory_path()) /
                  ("veldor-fuzz-" + std::to_string(::getpid()));
        fs::create_directories(folder_);
        fs::current_path(folder_);
        set_uformat(U_ASCII);
        install_allegro(SYSTEM_NONE, &errno, nullptr);
        set_color_depth(32);
        set_config_data("\n", 1);
        layout_width = 800;
        layout_height = 600;
    }
    ~World() {
        release_fonts();
        std::error_code ignored;
        std::filesystem::current_path("/", ignored);
        std::filesystem::remove_all(folder_, ignored);
    }

    std::filesystem::path folder_;
    bool fonts_ = false;
};

} // namespace vcc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
