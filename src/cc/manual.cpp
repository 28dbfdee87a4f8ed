#include "cc/manual.h"

#include "cc/options_view.h"
#include "core/alert.h"
#include "core/clock.h"
#include "core/installation.h"
#include "core/log.h"
#include "platform/document.h"
#include "sound/music.h"
#include "sound/sound.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace vcc {

namespace {

constexpr const char* alert_headline = "Error opening the veldor_manual:";

struct Report {
    std::array<int, 2> results; ///< numbers that call for it
    const char* line2;
    const char* line3;
    const char* log;
};

constexpr Report reports[] = {
    {{0, 8}, "not enough memory!", "", "not enough memory!"},
    {{2, 2}, "veldor_manual not found!", "", "veldor_manual not found!"},
    {{5, 26},
     "File is locked by System or another application!",
     "",
     "File is locked by System or another application!"},
    {{11, 31},
     "Please check whether an",
     "Acrobat Reader is installed/available!",
     "Please check whether an Acrobat Reader is available!"},
};

void report(int result) {
    const auto found = std::ranges::find_if(
        reports, [&](const Report& row) { return std::ranges::find(row.results, result) != row.results.end(); });
    if (found == std::end(reports))
        return;
    show_alert(alert_headline, found->line2, found->line3);
    write_log(format_text("Error opening the veldor_manual(%s):%d", path::manual, result));
    write_log(found->log);
}

} // namespace

void open_manual(BITMAP* target) {
    const bool music = needs_met(Needs::music);
    if (music) {
        hide_loop_button();
        if (music_playing)
            pause_music_voice();
    }
    report(open_with_retries([] { return platform::open_document(path::manual); }, wait_ms));
    if (music && music_playing)
        resume_music_voice();
    draw_module_marker(target);
}

} // namespace vcc
