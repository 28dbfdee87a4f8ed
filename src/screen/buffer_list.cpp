#include "screen/buffer_list.h"

#include "core/alert.h"
#include "core/files.h"
#include "core/installation.h"
#include "core/lines.h"
#include "core/log.h"
#include "core/text.h"
#include "display/backgrounds.h"
#include "display/buffers.h"
#include "display/picture.h"
#include "sound/music.h"

#include <algorithm>
#include <map>
#include <utility>

namespace vcc {

namespace {

/// Music and backgrounds go on while pictures load.
void show_progress() {
    feed_music();
    show_next_background();
}

bool create_work_bitmaps() {
    for (const int number : {window_copy_buffer, info_copy_buffer, help_save_buffer, text_copy_buffer}) {
        BitmapPtr& buffer = graphic_buffers[static_cast<std::size_t>(number)];
        buffer.reset(create_bitmap(layout_width, layout_height));
        if (!buffer) {
            write_log(format_text("no memory for graphic buffer %d", number));
            return false;
        }
        clear_bitmap(buffer.get());
        show_progress();
    }
    return true;
}

/// Buffers by the pictures in them. A picture that the list names again is copied, ten times as fast as reading it.
using PicturesRead = std::map<std::string, int>;

BitmapPtr picture_for(std::size_t index, const std::string& path, const PicturesRead& read) {
    const auto before = read.find(path);
    BITMAP* const same = before != read.end() ? graphic_buffer(before->second) : nullptr;
    if (!same)
        return load_picture(path, &buffer_palettes[index]).value_or(nullptr);
    std::ranges::copy(buffer_palettes[static_cast<std::size_t>(before->second)], buffer_palettes[index]);
    return copy_of(same);
}

bool load_buffer(int number, const std::string& path, PicturesRead& read) {
    const auto index = static_cast<std::size_t>(number);
    feed_music();
    BitmapPtr picture = picture_for(index, path, read);
    feed_music();
    if (!picture) {
        alert_and_log(format_text("error reading pic_file[%d]:=%s", number, path.c_str()));
        return false;
    }
    graphic_buffers[index] = std::move(picture);
    std::erase_if(read, [number](const auto& each) { return each.second == number; }); // its former picture is gone
    read.emplace(path, number);
    show_next_background();
    return true;
}

} // namespace

BufferList read_buffer_list(std::string_view text) {
    const auto is_buffer = [](int number) { return number >= 0 && number < graphic_buffer_count; };
    BufferList list;
    NumberedLines lines(text);
    while (const auto line = lines.next()) {
        const bool selects = line->kind == NumberedLine::Kind::number, checks = line->text.starts_with('*');
        const int number = checks ? to_number(line->text.substr(1)) : line->number.value_or(0);
        if ((selects || checks) && !is_buffer(number)) {
            list.unknown = {lines.line_number(), line->text.front(), number};
            break;
        }
        if (line->kind == NumberedLine::Kind::text && !checks)
            list.pictures.push_back({lines.line_number(), number, std::string(line->text)});
    }
    return list;
}

int load_graphic_buffers(const std::string& path) {
    if (!create_work_bitmaps())
        return 0;
    const auto text = read_file(path);
    if (!text)
        return 0;
    const BufferList list = read_buffer_list(*text);
    PicturesRead read;
    for (const ListedPicture& picture : list.pictures)
        if (!load_buffer(picture.buffer, picture.path, read))
            return 0;
    if (list.unknown && list.unknown->fails_list()) {
        if (list.unknown->key == '+')
            write_log(format_text("%s:%d: there is no graphic buffer %d", path.c_str(), list.unknown->line,
                                  list.unknown->number));
        return 0;
    }
    return static_cast<int>(list.pictures.size());
}

std::vector<std::string> listed_pictures(const std::string& path) {
    std::vector<std::string> paths;
    for (ListedPicture& picture : read_buffer_list(read_file(path).value_or("")).pictures)
        if (!picture.path.empty() && std::ranges::find(paths, picture.path) == paths.end())
            paths.push_back(std::move(picture.path));
    return paths;
}

} // namespace vcc
