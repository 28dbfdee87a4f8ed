#include "screen/buffer_list.h"

#include "core/alert.h"
#include "core/files.h"
#include "core/lines.h"
#include "core/log.h"
#include "core/text.h"
#include "display/backgrounds.h"
#include "display/buffers.h"
#include "display/picture.h"
#include "sound/music.h"

#include <initializer_list>
#include <utility>

namespace vcc {

namespace {

constexpr int work_width = 800, work_height = 600;

/// Loading takes seconds; music and background go on between two steps.
void show_progress() {
    feed_music();
    show_next_background();
}

bool create_work_bitmaps() {
    for (const int number : {window_copy_buffer, info_copy_buffer, help_save_buffer, text_copy_buffer}) {
        BitmapPtr& buffer = graphic_buffers[static_cast<std::size_t>(number)];
        buffer.reset(create_bitmap(work_width, work_height));
        if (!buffer) {
            write_log(format_text("no memory for graphic buffer %d", number));
            return false;
        }
        clear_bitmap(buffer.get());
        show_progress();
    }
    return true;
}

bool load_buffer(int number, const std::string& path) {
    const auto index = static_cast<std::size_t>(number);
    feed_music();
    BitmapPtr picture = load_picture(path, &buffer_palettes[index]);
    feed_music();
    if (!picture) {
        const std::string text = format_text("error reading pic_file[%d]:=%s", number, path.c_str());
        show_alert(text);
        write_log(text);
        return false;
    }
    graphic_buffers[index] = std::move(picture);
    show_next_background();
    return true;
}

bool is_buffer(int number) {
    return number >= 0 && number < graphic_buffer_count;
}

} // namespace

int load_graphic_buffers(const std::string& path) {
    if (!create_work_bitmaps())
        return 0;
    const auto text = read_file(path);
    if (!text)
        return 0;
    LineReader lines(*text);
    int current = 0, count = 0;
    while (const auto line = lines.next()) {
        const char key = line->empty() ? '\0' : line->front();
        const int number = key == '\0' ? 0 : to_number(line->substr(1));
        switch (key) {
        case '#':
            break;
        case '+':
            if (number >= graphic_buffer_count)
                return count;
            if (number < 0) {
                write_log(
                    format_text("%s:%d: there is no graphic buffer %d", path.c_str(), lines.line_number(), number));
                return 0;
            }
            current = number;
            break;
        case '*':
            if (!is_buffer(number))
                return 0;
            break;
        default:
            if (!load_buffer(current, std::string(*line)))
                return 0;
            ++count;
        }
    }
    return count;
}

} // namespace vcc
