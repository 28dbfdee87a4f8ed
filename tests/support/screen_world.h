// For unit tests of what is drawn: fonts with their grids, a picture to draw on, and questions about its pixels.
#pragma once

#include "display/buffers.h"
#include "screen/colours.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "screen/text_window.h"
#include "settings/settings.h"
#include "support/stand_in_display.h"
#include "text/fonts.h"

#include <gtest/gtest.h>
#include <initializer_list>

namespace vcc::test {

/// A folder with the two fonts of an installation, an empty black picture and text with hard edges.
class ScreenWorld : public testing::Test {
protected:
    ScreenWorld() {
        start_library();
        const std::filesystem::path liberation = "/usr/share/fonts/truetype/liberation";
        std::filesystem::create_directories("fonts");
        std::filesystem::copy_file(liberation / "LiberationSans-Regular.ttf", "fonts/arial.ttf");
        std::filesystem::copy_file(liberation / "LiberationMono-Regular.ttf", "fonts/cour.ttf");
        folder.write("data/logfiles/veldor_log.txt", "");
        set_config_data("", 0);
        loaded = load_fonts("VELDOR_VCC", "fonts");
        configure_fonts("VELDOR_VCC");
        select_font(0);
        picture.reset(create_bitmap(800, 600));
        clear_bitmap(picture.get());
        anti_aliased_text = text_on_box = full_redraw = 0;
        show_slot_pictures = 1;
        text_windows = {};
        current_text_window = 0;
        dot_spacing = 2;
    }
    ~ScreenWorld() override {
        release_graphic_buffers();
        release_fonts();
    }
    void SetUp() override { ASSERT_TRUE(loaded); }

    const int* row(int y) const { return reinterpret_cast<const int*>(picture->line[y]); }
    int at(int x, int y) const { return getpixel(picture.get(), x, y); }
    /// Pixels of a rectangle (corners inclusive) that are not black.
    int ink(int x1, int y1, int x2, int y2) const {
        int count = 0;
        for (int y = y1; y <= y2; ++y)
            for (int x = x1; x <= x2; ++x)
                count += row(y)[x] != 0;
        return count;
    }
    int ink() const { return ink(0, 0, 799, 599); }
    /// The smallest rectangle around all that is not black; {0, 0, -1, -1} for nothing.
    Rect inked() const {
        Rect area{800, 600, -1, -1};
        for (int y = 0; y < 600; ++y)
            for (int x = 0; x < 800; ++x)
                if (row(y)[x] != 0)
                    area = {std::min(area.x1, x), std::min(area.y1, y), std::max(area.x2, x), std::max(area.y2, y)};
        return area.x2 < 0 ? Rect{0, 0, -1, -1} : area;
    }
    std::string bytes() const {
        std::string all;
        for (int y = 0; y < 600; ++y)
            all.append(reinterpret_cast<const char*>(picture->line[y]), 800 * 4);
        return all;
    }
    void wipe() { clear_bitmap(picture.get()); }

    ScratchFolder folder;
    BitmapPtr picture;
    bool loaded = false;
};

inline void PrintTo(const Rect& r, std::ostream* out) {
    *out << r.x1 << "," << r.y1 << " - " << r.x2 << "," << r.y2;
}
inline bool same(const Rect& a, const Rect& b) {
    return a.x1 == b.x1 && a.y1 == b.y1 && a.x2 == b.x2 && a.y2 == b.y2;
}

inline void put_buffer(int number, int width, int height, int pixel) {
    BitmapPtr& buffer = graphic_buffers[static_cast<std::size_t>(number)];
    buffer.reset(create_bitmap(width, height));
    clear_to_color(buffer.get(), pixel);
}

} // namespace vcc::test
