#include "cc/manual.h"

#include "core/alert.h"
#include "core/clock.h"
#include "core/installation.h"
#include "core/log.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "text/language.h"
#include "text/screen_texts.h"

#include <algorithm>
#include <array>

namespace vcc {

namespace {

namespace text = screen_text_number;

constexpr int no_line = -1;

struct Report {
    std::array<int, 2> results; ///< that it reports
    int line2, line3;           ///< of the alert: texts of the screens
    const char* log;
};

constexpr Report reports[] = {
    {{0, 8}, text::manual_no_memory, no_line, "not enough memory!"},
    {{2, 2}, text::manual_missing, no_line, "veldor_manual not found!"},
    {{5, 26}, text::manual_locked, no_line, "File is locked by System or another application!"},
    {{11, 31},
     text::manual_no_reader,
     text::manual_no_reader_2,
     "Please check whether an Acrobat Reader is available!"},
};

void report(const char* manual, int result) {
    const auto found = std::ranges::find_if(
        reports, [&](const Report& row) { return std::ranges::find(row.results, result) != row.results.end(); });
    if (found == std::end(reports))
        return;
    show_alert(screen_text(text::manual_headline), screen_text(found->line2), screen_text(found->line3));
    write_log(format_text("Error opening the veldor_manual(%s):%d", manual, result));
    write_log(found->log);
}

} // namespace

const char* manual_file() {
    constexpr int german = 2;
    return language == german && platform::file_exists(path::german_manual) ? path::german_manual : path::manual;
}

void open_manual() {
    const bool music = sound_on && music_on && music_playing;
    if (music)
        pause_music_voice();
    const char* const manual = manual_file();
    report(manual, open_with_retries([&] { return platform::open_document(manual); }, wait_ms));
    if (music)
        resume_music_voice();
}

} // namespace vcc
