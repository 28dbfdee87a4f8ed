// What every fuzz target needs: the graphics library without a display, a scratch folder, and libFuzzer's entry; it
// hands every input to the target's own one_input().
#pragma once

#include "core/handles.h"
#include "support/allegro_none.h"
#include "text/fonts.h"

#include <cstdint>

namespace vcc::fuzz {

/// The working folder, and the library.
class World : public test::ScratchFolder {
public:
    World() {
        test::start_library();
        set_config_data("\n", 1);
    }
    ~World() { release_fonts(); }
};

/// One for the whole process.
inline const World& world() {
    static const World one;
    return one;
}

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
    vcc::fuzz::world();
    vcc::fuzz::one_input({reinterpret_cast<const char*>(data), size});
    return 0;
}
