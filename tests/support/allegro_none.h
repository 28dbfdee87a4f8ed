// For unit tests: the graphics library without a display, a bitmap in its place, a scratch folder of the test's own.
#pragma once

#include "core/handles.h"

#include <allegro.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace vcc::test {

/// Starts the library with no system driver once per process, 8-bit texts, 32-bit memory bitmaps.
inline void start_library() {
    static const bool started = [] {
        set_uformat(U_ASCII);
        install_allegro(SYSTEM_NONE, &errno, nullptr);
        set_color_depth(32);
        return true;
    }();
    (void)started;
}

/// Stands in for the display while it lives, and shows what reaches it.
class StandInDisplay {
public:
    StandInDisplay() {
        start_library();
        display_.reset(create_bitmap(800, 600));
        clear_bitmap(display_.get());
        screen = display_.get();
    }
    ~StandInDisplay() { screen = nullptr; }
    int at(int x, int y) const { return getpixel(display_.get(), x, y); }

private:
    BitmapPtr display_;
};

/// A fresh working folder for one test; the old one is entered again and the new one removed at the end.
class ScratchFolder {
public:
    ScratchFolder() : before_(std::filesystem::current_path()) {
        static int count = 0;
        folder_ = std::filesystem::temp_directory_path() /
                  ("veldor-test-" + std::to_string(::getpid()) + "-" + std::to_string(count++));
        std::filesystem::create_directories(folder_);
        std::filesystem::current_path(folder_);
    }
    ~ScratchFolder() {
        std::filesystem::current_path(before_);
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// Writes a file below the folder, making its folders.
    void write(const std::string& name, std::string_view bytes) const {
        const auto path = folder_ / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    /// The bytes of a file below the folder; empty when it is missing.
    std::string read(const std::string& name) const {
        std::error_code error;
        const auto size = std::filesystem::file_size(folder_ / name, error);
        std::string bytes(error ? 0 : size, '\0');
        std::ifstream(folder_ / name, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return bytes;
    }
    std::string log() const {
        std::string text = read("data/logfiles/veldor_log.txt");
        std::erase(text, '\r'); // the line ends of a text file on Windows
        return text;
    }
    const std::filesystem::path& path() const { return folder_; }

private:
    std::filesystem::path before_, folder_;
};

} // namespace vcc::test
