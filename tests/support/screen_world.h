// For unit tests of screens: slots that are described in one line, fonts with their grids, a picture to draw on, and
// questions about its pixels.
#pragma once

#include "core/text.h"
#include "display/buffers.h"
#include "screen/colours.h"
#include "screen/draw_slot.h"
#include "screen/slot.h"
#include "screen/text_window.h"
#include "settings/settings.h"
#include "text/fonts.h"
#include "unit/folder_test.h"

#include <algorithm>
#include <initializer_list>
#include <span>
#include <string_view>

namespace vcc::test {

struct SlotField {
    std::int32_t Slot::*field;
    int value;
};

inline void set_fields(Slot& slot, std::initializer_list<SlotField> fields) {
    for (const SlotField& each : fields)
        slot.*each.field = each.value;
}

inline Slot make_slot(std::string_view text, std::initializer_list<SlotField> fields = {}) {
    Slot slot{};
    store_text(slot.text, text);
    set_fields(slot, fields);
    return slot;
}

/// Corners in pixels, all of them inside.
struct Area {
    int x1, y1, x2, y2;
    bool operator==(const Area&) const = default;
};
inline constexpr Area nothing{0, 0, -1, -1};
inline void PrintTo(const Area& a, std::ostream* out) {
    *out << a.x1 << "," << a.y1 << " - " << a.x2 << "," << a.y2;
}

/// A folder with the two fonts of an installation, an empty black picture and text with hard edges.
class ScreenWorld : public FolderTest {
protected:
    ScreenWorld() {
        const std::filesystem::path liberation = "/usr/share/fonts/truetype/liberation";
        std::filesystem::create_directories("fonts");
        std::filesystem::copy_file(liberation / "LiberationSans-Regular.ttf", "fonts/arial.ttf");
        std::filesystem::copy_file(liberation / "LiberationMono-Regular.ttf", "fonts/cour.ttf");
        set_config_data("", 0);
        loaded = load_fonts("fonts");
        configure_fonts();
        select_font(0);
        picture.reset(create_bitmap(800, 600));
        wipe();
        anti_aliased_text = drawing.text_on_box = drawing.full_redraw = 0;
        text_windows = {};
        current_text_window = 0;
    }
    ~ScreenWorld() override {
        release_graphic_buffers();
        release_fonts();
    }
    void SetUp() override { ASSERT_TRUE(loaded); }

    void wipe() const { clear_bitmap(picture.get()); }
    int at(int x, int y) const { return getpixel(picture.get(), x, y); }
    std::span<const int> pixels() const { return {reinterpret_cast<const int*>(picture->line[0]), 800 * 600}; }
    int count(int pixel) const { return static_cast<int>(std::ranges::count(pixels(), pixel)); }
    /// Pixels that are not black.
    int ink() const { return 800 * 600 - count(0); }
    /// The smallest rectangle around all that is not black.
    Area inked() const {
        Area area{800, 600, -1, -1};
        for (int y = 0; y < 600; ++y)
            for (int x = 0; x < 800; ++x)
                if (at(x, y) != 0)
                    area = {std::min(area.x1, x), std::min(area.y1, y), std::max(area.x2, x), std::max(area.y2, y)};
        return area.x2 < 0 ? nothing : area;
    }

    BitmapPtr picture;
    bool loaded = false;
};

inline void put_buffer(int number, int width, int height, int pixel) {
    BitmapPtr& buffer = graphic_buffers[static_cast<std::size_t>(number)];
    buffer.reset(create_bitmap(width, height));
    clear_to_color(buffer.get(), pixel);
}

} // namespace vcc::test
