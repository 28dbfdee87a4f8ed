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
#include <utility>

namespace vcc {

namespace {

bool create_work_bitmaps() {
    for (const int number : {window_copy_buffer, info_copy_buffer, help_save_buffer, text_copy_buffer}) {
        BitmapPtr& buffer = graphic_buffers[static_cast<std::size_t>(number)];
        buffer.reset(create_bitmap(layout_width, layout_height));
        if (!buffer) {
            write_log(format_text("no memory for graphic buffer %d", number));
            return false;
        }
        clear_bitmap(buffer.get());
        feed_music();
        show_next_background();
    }
    return true;
}

/// The pictures that the buffers hold. One that the list names again is copied, ten times as fast as reading it.
using PicturesHeld = std::array<const ListedPicture*, graphic_buffer_count>;

BitmapPtr picture_for(const ListedPicture& wanted, const PicturesHeld& held) {
    PALETTE& palette = buffer_palettes[static_cast<std::size_t>(wanted.buffer)];
    const auto same =
        std::ranges::find_if(held, [&](const ListedPicture* each) { return each && each->path == wanted.path; });
    if (same == held.end())
        return load_picture(wanted.path, &palette).value_or(nullptr);
    std::ranges::copy(buffer_palettes[static_cast<std::size_t>((*same)->buffer)], palette);
    return copy_of(graphic_buffer((*same)->buffer));
}

bool load_buffer(const ListedPicture& listed, PicturesHeld& held) {
    const auto index = static_cast<std::size_t>(listed.buffer);
    feed_music();
    BitmapPtr picture = picture_for(listed, held);
    feed_music();
    if (!picture) {
        alert_and_log(format_text("error reading pic_file[%d]:=%s", listed.buffer, listed.path.c_str()));
        return false;
    }
    graphic_buffers[index] = std::move(picture);
    held[index] = &listed;
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
    PicturesHeld held{};
    for (const ListedPicture& picture : list.pictures)
        if (!load_buffer(picture, held))
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
