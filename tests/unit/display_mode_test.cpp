// The graphics mode on a simulated machine: this program stands in for the library's calls that ask and set it.
#include "display/buffers.h"
#include "display/graphics_mode.h"
#include "folder_test.h"
#include "settings/config_file.h"
#include "settings/settings.h"
#include "x11/display.h"

#include <vector>

namespace {

struct Machine {
    int width = 1280, height = 1024, depth = 32; ///< of the desktop
    std::vector<GFX_MODE> list = {};             ///< the modes it names: width, height, depth
    bool (*can_set)(bool full, int bits) = [](bool, int) { return true; };
    std::string tried = {}; ///< every set_gfx_mode: F32 W16 ...; with a "-" when it failed
    int switch_mode = -1;
} machine;

} // namespace

extern "C" {

GFX_MODE_LIST* get_gfx_mode_list(int) {
    return new GFX_MODE_LIST{static_cast<int>(machine.list.size()), machine.list.data()};
}
void destroy_gfx_mode_list(GFX_MODE_LIST* list) {
    delete list;
}
int set_gfx_mode(int card, int, int, int, int) {
    machine.switch_mode = -1;
    const bool full = card == GFX_AUTODETECT_FULLSCREEN;
    const bool done = machine.can_set(full, get_color_depth());
    machine.tried += (full ? "F" : "W") + std::to_string(get_color_depth()) + (done ? " " : "- ");
    return done ? 0 : -1;
}
int set_display_switch_mode(int mode) {
    if (mode == SWITCH_BACKAMNESIA) // unknown to X11
        return -1;
    machine.switch_mode = mode;
    return 0;
}
}

namespace vcc {
namespace {

class GraphicsMode : public test::FolderTest {
protected:
    GraphicsMode() {
        folder.write("data/configs/vcc.cfg", "");
        select_config_file();
        // These two questions go through the system driver's table.
        static SYSTEM_DRIVER driver = *system_driver;
        driver.desktop_color_depth = [] { return machine.depth; };
        driver.get_desktop_resolution = [](int* width, int* height) {
            *width = machine.width;
            *height = machine.height;
            return *width == 0 ? -1 : 0;
        };
        system_driver = &driver;
        machine = {};
    }
    ~GraphicsMode() override { set_color_depth(32); }

    void configure(int range, int screen_mode, int bitmap_depth) const {
        set_config_int(section, "screen_mode_range", range);
        set_config_int(section, "screen_mode", screen_mode);
        set_config_int(section, "bitmap_depth", bitmap_depth);
        mode_range = ModeRange::none;
        machine.tried.clear();
        empty_log();
    }
    /// The three settings as "depth/range/mode".
    static std::string recorded() {
        const auto value = [](const char* key) { return std::to_string(get_config_int(section, key, -9)); };
        return value("bitmap_depth") + "/" + value("screen_mode_range") + "/" + value("screen_mode");
    }
    static std::string tried() { return std::exchange(machine.tried, {}); }

    static constexpr const char* section = "VELDOR_GRAPHICS";
};

TEST_F(GraphicsMode, ProbingRecordsWhatTheMachineOffersAndLogsWhyItCannotBeUsed) {
    const auto all = [](bool, int) { return true; };
    const auto none = [](bool, int) { return false; };
    const auto not_at_32 = [](bool, int bits) { return bits != 32; };
    const auto low_windows = [](bool full, int bits) { return !full && bits <= 16; };
    const auto only_at_15 = [](bool, int bits) { return bits == 15; };
    const bool centred = platform::full_screen_is_centred; // a larger mode stands for the picture's own, or does not
    const struct {
        Machine machine;
        const char *tried, *recorded, *logged;
    } cases[] = {
        {{1280, 1024, 32, {{1024, 768, 24}, {640, 480, 32}, {800, 600, 16}}, all},
         centred ? "W24 " : "W16 ",
         centred ? "1/3/0" : "2/3/0",
         ""},
        {{1280, 1024, 24, {{800, 600, 8}}, not_at_32}, "F32- F24 W24 ", "1/3/0", ""},
        {{1280, 1024, 16, {}, low_windows}, "F32- F24- F16- F15- W32- W24- W16 ", "2/2/0", ""},
        {{1280, 1024, 16, {{800, 600, 16}}, only_at_15}, "W16- W15 ", "3/3/0", ""},
        {{1280, 1024, 16, {{800, 600, 15}}, all}, "W15 ", "3/3/0", ""},
        {{800, 600, 8, {{800, 600, 32}}, all}, "F32 ", "0/1/1", ""},
        {{1024, 599, 32, {}, all}, "", "9/-1/7", "Wrong desktop resolution!\n800x600 is minimum"},
        {{0, 0, 0, {}, all}, "", "9/-1/7", "Wrong Desktop color depth!\n16bit is minimum"}, // nothing is known
        {{800, 600, 32, {}, none}, "F32- F24- F16- F15- ", "9/-1/7", "No valid videomode detected !"},
        {{800, 600, 16, {{800, 600, 16}}, none}, "F16- F15- ", "9/-1/7", "Error 1: Desktop 16/800/600 Request 16/-1/1"},
        {{800, 600, 32, {{800, 600, 32}}, none}, "F32- ", "9/-1/7", "Error 2: Desktop 32/800/600 Request 32/-1/1"},
        {{1280, 1024, 16, {{800, 600, 16}}, none},
         "W16- W15- ",
         "9/-1/7",
         "Error 3: Desktop 16/1280/1024 Request 16/0/3"},
        {{1280, 1024, 32, {{800, 600, 32}}, none}, "W32- ", "9/-1/7", "Error 4: Desktop 32/1280/1024 Request 32/0/3"},
        {{1280, 1024, 32, {{800, 600, 40}}, all}, "W40 ", "9/-1/7", "First run fdepth error"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.tried);
        configure(-1, 7, 9);
        machine = c.machine;
        const std::string logged_text = c.logged;
        EXPECT_EQ(setup_graphics_mode(probe_machine), logged_text.empty() ? SetupResult::ok : SetupResult::fatal);
        EXPECT_EQ(tried(), c.tried);
        EXPECT_EQ(recorded(), c.recorded);
        EXPECT_TRUE(logged(logged_text)) << folder.log();
    }
}

TEST_F(GraphicsMode, ConfiguredModeIsSetWithoutProbingOrAsksForIt) {
    const struct {
        int range, screen_mode, bitmap_depth;
        const char *tried, *logged;
    } cases[] = {{3, 1, 2, "F16 ", ""},
                 {99, -1, 1, "F24 ", ""},
                 {3, 256, 1, "W24 ", ""}, // a signed byte, as everywhere
                 {2, 1, 0, "W32 ", ""},
                 {99, 1, 0, "F32- ", "Error 5: Desktop 32/1280/1024 Request 32/-1/3"},
                 {2, 0, 7, "", "Error 6: Desktop 32/1280/1024 Request 0/0/2"}};
    machine.can_set = [](bool full, int bits) { return !full || bits != 32; };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.tried);
        configure(c.range, c.screen_mode, c.bitmap_depth);
        const std::string logged_text = c.logged;
        EXPECT_EQ(setup_graphics_mode(use_configured_mode), logged_text.empty() ? SetupResult::ok : SetupResult::retry);
        EXPECT_EQ(tried(), c.tried);
        EXPECT_TRUE(logged(logged_text)) << folder.log();
        if (logged_text.empty()) {
            EXPECT_EQ(depth_class, depth_flags(depths[static_cast<std::size_t>(c.bitmap_depth)]));
        }
    }
}

TEST_F(GraphicsMode, ChangesOnlyToWhatIsOfferedAndComesBackWhenThatFails) {
    configure(3, 0, 2);
    EXPECT_EQ(setup_graphics_mode(use_configured_mode), SetupResult::ok);
    switch_display_mode(true);
    switch_display_mode(false);
    EXPECT_EQ(tried(), "W16 F16 F16 ");
    EXPECT_EQ(machine.switch_mode, SWITCH_BACKGROUND);

    for (const int refused : {0, 1, 4, -1}) {
        settings.bitmap_depth = refused;
        EXPECT_FALSE(rebuild_display(false)) << refused;
    }
    graphic_buffers[0].reset(create_bitmap(8, 8));
    settings.bitmap_depth = 3;
    EXPECT_TRUE(rebuild_display(true));
    EXPECT_EQ(tried(), "W15 ");
    EXPECT_EQ(graphic_buffer(0), nullptr);

    machine.can_set = [](bool full, int bits) { return !full && bits == 15; };
    settings.bitmap_depth = 2;
    EXPECT_TRUE(rebuild_display(true));
    EXPECT_EQ(tried(), "F16- W15 ");
    EXPECT_EQ(fullscreen, windowed);
    EXPECT_TRUE(logged("Cannot set the full-screen mode at 16 bits"));
}

} // namespace
} // namespace vcc
