// The graphics mode on a simulated machine: this program stands in for the library's calls that ask and set it.
#include "display/buffers.h"
#include "display/mode_rules.h"
#include "display/switching.h"
#include "settings/settings.h"
#include "support/allegro_none.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <sstream>
#include <vector>

namespace {

/// What a machine offers.
struct Hardware {
    int width = 1280, height = 1024, depth = 32;
    const char* list = ""; ///< the modes it names: 800x600x16 800x600x32
    bool (*can_set)(bool full, int bits) = [](bool, int) { return true; };
};

struct Machine {
    Hardware hardware;
    bool knows_amnesia = false, callbacks_work = true;
    std::string modes; ///< every successful set_gfx_mode: F32 W16 ...
    std::string tried; ///< every set_gfx_mode
    std::string shown;
    int switch_mode = -1;
    void (*in)() = nullptr;
    void (*out)() = nullptr;
} machine;

} // namespace

extern "C" {

GFX_MODE_LIST* get_gfx_mode_list(int) {
    static std::vector<GFX_MODE> modes;
    modes.clear();
    std::istringstream list(machine.hardware.list);
    char by = 0;
    for (GFX_MODE mode{}; list >> mode.width >> by >> mode.height >> by >> mode.bpp;)
        modes.push_back(mode);
    return modes.empty() ? nullptr : new GFX_MODE_LIST{static_cast<int>(modes.size()), modes.data()};
}
void destroy_gfx_mode_list(GFX_MODE_LIST* list) {
    delete list;
}
int set_gfx_mode(int card, int width, int height, int virtual_width, int virtual_height) {
    EXPECT_EQ(std::vector({width, height, virtual_width, virtual_height}), std::vector({800, 600, 0, 0}));
    const bool full = card == GFX_AUTODETECT_FULLSCREEN;
    const std::string mode = (full ? "F" : "W") + std::to_string(get_color_depth()) + " ";
    machine.tried += mode;
    if (!machine.hardware.can_set(full, get_color_depth()))
        return -1;
    machine.modes += mode;
    return 0;
}
void allegro_message(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    char text[400];
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    machine.shown += text;
}
int set_display_switch_mode(int mode) {
    machine.in = machine.out = nullptr;
    if (mode == SWITCH_BACKAMNESIA && !machine.knows_amnesia)
        return -1;
    machine.switch_mode = mode;
    return 0;
}
int set_display_switch_callback(int direction, void (*callback)()) {
    if (!machine.callbacks_work)
        return -1;
    (direction == SWITCH_IN ? machine.in : machine.out) = callback;
    return 0;
}
}

namespace vcc {
namespace {

// Modes that a machine can set.
constexpr auto sets_all = [](bool, int) { return true; };
constexpr auto sets_none = [](bool, int) { return false; };
constexpr auto sets_windows = [](bool full, int) { return !full; };

class GraphicsMode : public ::testing::Test {
protected:
    void SetUp() override {
        test::start_library();
        folder_.write("data/configs/vcc.cfg", "");
        select_config_file();
        // These two questions go through the system driver's table.
        static SYSTEM_DRIVER driver = *system_driver;
        driver.desktop_color_depth = [] { return machine.hardware.depth; };
        driver.get_desktop_resolution = [](int* width, int* height) {
            *width = machine.hardware.width;
            *height = machine.hardware.height;
            return *width == 0 ? -1 : 0;
        };
        system_driver = &driver;
        fullscreen = windowed;
        settings = Settings{};
        set_color_depth(8);
        install_on({});
    }
    void TearDown() override { set_color_depth(32); }

    /// A machine before the program's first start on it.
    void install_on(const Hardware& hardware) {
        for (const char* const key : {"screen_mode_range", "screen_mode", "bitmap_depth"})
            set_config_string(section, key, nullptr);
        folder_.write("data/logfiles/veldor_log.txt", "");
        machine = {};
        machine.hardware = hardware;
        mode_range = 0;
    }
    static void configure(int range, int screen_mode, int bitmap_depth) {
        set_config_int(section, "screen_mode_range", range);
        set_config_int(section, "screen_mode", screen_mode);
        set_config_int(section, "bitmap_depth", bitmap_depth);
    }
    /// The three settings as "depth/range/mode"; -9 for a key that is not there.
    static std::string recorded() {
        const auto value = [](const char* key) { return std::to_string(get_config_int(section, key, -9)); };
        return value("bitmap_depth") + "/" + value("screen_mode_range") + "/" + value("screen_mode");
    }
    bool logged(const std::string& text) const { return folder_.log().find(text) != std::string::npos; }

    static constexpr const char* section = "VELDOR_GRAPHICS";
    test::ScratchFolder folder_;
};

TEST_F(GraphicsMode, ProbingFindsWhatTheMachineOffersAndRecordsIt) {
    const auto not_at_32 = [](bool, int bits) { return bits != 32; };
    const auto low_windows = [](bool full, int bits) { return !full && bits <= 16; };
    const auto only_at_15 = [](bool, int bits) { return bits == 15; };
    const struct {
        const char* name;
        Hardware hardware;
        const char* modes; ///< what was set, in order
        int range;
        const char* settings;
    } cases[] = {
        {"list", {1280, 1024, 32, "800x600x16 800x600x32", sets_all}, "W32 ", 3, "0/3/0"},
        {"larger modes do", {1280, 1024, 32, "1024x768x24 640x480x32", sets_all}, "W24 ", 3, "1/3/0"},
        {"8-bit list, so trying", {1280, 1024, 32, "800x600x8", sets_all}, "F32 W32 ", 3, "0/3/0"},
        {"trying finds 24", {1280, 1024, 24, "", not_at_32}, "F24 W24 ", 3, "1/3/0"},
        {"no full screen: window depths in order", {1280, 1024, 16, "", low_windows}, "W16 ", 2, "2/2/0"},
        {"16 gives way to 15", {1280, 1024, 16, "800x600x16", only_at_15}, "W15 ", 3, "3/3/0"},
        {"exact desktop", {800, 600, 32, "800x600x32", sets_all}, "F32 ", 1, "0/1/1"},
        {"exact desktop at 8 bits", {800, 600, 8, "", sets_all}, "F32 F32 ", 1, "0/1/1"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        install_on(c.hardware);
        EXPECT_EQ(setup_graphics_mode(use_configured_mode), SetupResult::ok);
        EXPECT_EQ(machine.modes, c.modes);
        EXPECT_EQ(mode_range, c.range);
        EXPECT_EQ(screen_mode_range, c.range);
        EXPECT_EQ(recorded(), c.settings);
        EXPECT_EQ(fullscreen, c.settings[4] == '1' ? full_screen : windowed);
        EXPECT_NE(machine.in, nullptr);
        EXPECT_EQ(machine.shown, "");
    }
}

TEST_F(GraphicsMode, EveryFailureOfProbingIsShownAndLoggedAndRecordsNothing) {
    const std::string size = "Wrong desktop resolution!\n800x600 is minimum";
    const std::string depth = "Wrong Desktop color depth!\n16bit is minimum";
    const char *at_16 = "800x600x16", *at_32 = "800x600x32", *at_40 = "800x600x40";
    const struct {
        Hardware hardware;
        std::string shown, logged;
        int kept_range = 0; ///< mode_range that an earlier set-up left
    } cases[] = {
        {{799, 600, 32, at_32, sets_all}, size, size},
        {{1024, 599, 32, at_32, sets_all}, size, size},
        {{1024, 768, 8, at_32, sets_all}, depth, depth},
        {{0, 0, 0, at_32, sets_all}, depth, depth}, // both unknown
        {{800, 600, 32, "", sets_none}, "No valid videomode detected !", "No valid videomode detected !"},
        {{800, 600, 16, at_16, sets_none}, "gfx mode error 1 !", "Error 1: Desktop 16/800/600 Request 16/-1/1"},
        {{800, 600, 32, at_32, sets_none}, "gfx mode error 2 !", "Error 2: Desktop 32/800/600 Request 32/-1/1"},
        {{1280, 1024, 16, at_16, sets_none}, "gfx mode error 3 !", "Error 3: Desktop 16/1280/1024 Request 16/0/3"},
        {{1280, 1024, 32, at_32, sets_none}, "gfx mode error 4 !", "Error 4: Desktop 32/1280/1024 Request 32/0/3"},
        {{1280, 1024, 24, "", sets_none}, "gfx mode error 4 !", "Error 4: Desktop 24/1280/1024 Request 0/0/2"},
        {{800, 600, 32, "", sets_all}, "First run fdepth error !", "First run fdepth error", 1},
        {{1280, 1024, 32, at_40, sets_all}, "First run fdepth error !", "First run fdepth error"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.logged);
        install_on(c.hardware);
        mode_range = c.kept_range;
        EXPECT_EQ(setup_graphics_mode(probe_machine), SetupResult::fatal);
        EXPECT_EQ(machine.shown, c.shown + "\n");
        EXPECT_TRUE(logged(c.logged)) << folder_.log();
        EXPECT_EQ(recorded(), "-9/-9/-9");
        EXPECT_EQ(machine.switch_mode, -1);
    }
}

TEST_F(GraphicsMode, ConfiguredModeIsSetWithoutProbing) {
    const struct {
        int range, screen_mode, bitmap_depth;
        const char *modes, *settings;
        std::array<int, 3> flags;
    } cases[] = {{3, 1, 2, "F16 ", "2/3/1", {0, 0, 1}},
                 {3, 0, 1, "W24 ", "1/3/0", {0, 1, 0}},
                 {2, 1, 0, "W32 ", "0/2/0", {1, 0, 0}},
                 {1, -1, 3, "F15 ", "3/1/-1", {0, 0, 1}},
                 {99, 0, 0, "W32 ", "0/99/0", {1, 0, 0}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.settings);
        configure(c.range, c.screen_mode, c.bitmap_depth);
        machine.modes.clear();
        EXPECT_EQ(setup_graphics_mode(use_configured_mode), SetupResult::ok);
        EXPECT_EQ(machine.modes, c.modes);
        EXPECT_EQ(recorded(), c.settings);
        EXPECT_EQ(mode_range, std::min(c.range, 3));
        EXPECT_EQ(depth_class, c.flags);
    }
}

TEST_F(GraphicsMode, ConfiguredModeThatFailsAsksForProbing) {
    machine.hardware.can_set = sets_windows;
    configure(3, 1, 0);
    EXPECT_EQ(setup_graphics_mode(use_configured_mode), SetupResult::retry);
    EXPECT_EQ(machine.shown, "gfx mode error 5 !\n");
    EXPECT_TRUE(logged("Error 5: Desktop 32/1280/1024 Request 32/-1/3"));
    // Probing starts with the range of the failed set-up, so it tries no full-screen mode by itself.
    machine.tried.clear();
    EXPECT_EQ(setup_graphics_mode(probe_machine), SetupResult::ok);
    EXPECT_EQ(machine.tried, "W32 ");
    EXPECT_EQ(recorded(), "0/3/0");

    machine.shown.clear();
    configure(2, 1, 7);
    EXPECT_EQ(setup_graphics_mode(use_configured_mode), SetupResult::retry);
    EXPECT_EQ(machine.shown, "gfx mode error 6 !\n");
    EXPECT_TRUE(logged("Error 6: Desktop 32/1280/1024 Request 0/0/2"));
    EXPECT_EQ(recorded(), "7/2/0");
}

TEST_F(GraphicsMode, SwitchingTogglesAndComesBackWhenTheOtherModeFails) {
    machine.knows_amnesia = true;
    set_color_depth(32);
    for (const int toggle : {1, 1, 0})
        switch_display_mode(toggle);
    EXPECT_EQ(machine.modes, "F32 W32 W32 ");
    EXPECT_EQ(machine.switch_mode, SWITCH_BACKGROUND);
    switch_display_mode(1);
    EXPECT_EQ(fullscreen, full_screen);
    EXPECT_EQ(machine.switch_mode, SWITCH_BACKAMNESIA);

    machine.hardware.can_set = [](bool full, int) { return full; };
    machine.tried.clear();
    switch_display_mode(1);
    EXPECT_EQ(machine.tried, "W32 F32 ");
    EXPECT_EQ(fullscreen, full_screen);
    EXPECT_TRUE(logged("Cannot set the window mode at 32 bits"));
}

TEST_F(GraphicsMode, RebuildingTakesAnOfferedDepthAndReleasesTheBuffers) {
    depth_class = {0, 0, 1};
    set_color_depth(16);
    graphic_buffers[4].reset(create_bitmap_ex(16, 8, 8));
    for (const int refused : {0, 1, 4, -1}) {
        settings.bitmap_depth = refused;
        EXPECT_EQ(rebuild_display(0), 0) << refused;
    }
    EXPECT_EQ(machine.tried, "");
    EXPECT_NE(graphic_buffer(4), nullptr);

    settings.bitmap_depth = 3;
    EXPECT_EQ(rebuild_display(1), 1);
    EXPECT_EQ(machine.modes, "F15 ");
    EXPECT_EQ(graphic_buffer(4), nullptr);

    // A depth that cannot be set leaves the old mode in the old depth.
    settings.bitmap_depth = 2;
    machine.tried.clear();
    machine.hardware.can_set = [](bool, int bits) { return bits == 15; };
    EXPECT_EQ(rebuild_display(0), 1);
    EXPECT_EQ(machine.tried, "F16 F15 ");
    EXPECT_EQ(get_color_depth(), 15);
}

TEST_F(GraphicsMode, DisplaySwitchesAreReportedInEitherMode) {
    for (const std::uint8_t mode : {windowed, full_screen}) {
        fullscreen = mode;
        install_display_switching();
        EXPECT_EQ(machine.switch_mode, SWITCH_BACKGROUND) << "X11 refuses the other mode";
        machine.out();
        EXPECT_EQ(switched_out, 1);
        machine.in();
        EXPECT_EQ(switched_out, 0);
    }
    machine.callbacks_work = false;
    install_display_switching();
    EXPECT_TRUE(logged("Could not install SWITCH_IN callback"));
    EXPECT_TRUE(logged("Could not install SWITCH_OUT callback"));
}

} // namespace
} // namespace vcc
