// Fonts, and the pictures of the buffer list.
#include "vcckit/check/installation.h"

#include "core/log.h"
#include "media/truetype.h"
#include "platform/files.h"
#include "screen/buffer_list.h"
#include "settings/values.h"
#include "text/fonts.h"
#include "vcckit/media/pictures.h"

#include <algorithm>

namespace vcc::kit {

namespace {

using enum FaultCode;

bool made_by_program(int buffer) {
    return buffer >= window_copy_buffer;
}

} // namespace

void read_fonts(Installation& installation, Faults& faults) {
    if (!platform::init_truetype())
        return;
    bool all = true;
    for (int n = 0; n < font_count; ++n) {
        const std::string key = format_text("font%d_name", n);
        const std::string name = std::string(path::fonts) + "/" + read_text("font#_name", n);
        installation.named.insert(name);
        if (platform::load_truetype_font(platform::resolve_path(name)))
            continue;
        all = false;
        if (const auto told = std::ranges::find(faults, name, &Fault::file); told != faults.end()) {
            told->field += ", " + key; // the font of several numbers
            continue;
        }
        const bool there = platform::file_exists(name);
        Reporter{faults, name}(there ? font_unreadable : file_missing, key, there ? "is not a font" : "does not exist",
                               "add the font, or change the key in data/configs/vcc.cfg", true);
    }
    if (all && load_fonts(path::fonts))
        installation.fonts = true;
    configure_fonts(); // cells are known without faces, too
}

bool load_measuring_fonts() {
    Installation installation;
    Faults not_told; // vcckit check reports them
    read_settings(installation, not_told);
    bool there = platform::init_truetype();
    for (int n = 0; n < font_count; ++n) // otherwise the loader would write to the log
        there = there && platform::file_exists(std::string(path::fonts) + "/" + read_text("font#_name", n));
    const bool loaded = there && load_fonts(path::fonts);
    configure_fonts();
    return loaded;
}

void read_buffers(Installation& installation, Faults& faults) {
    const auto& text = installation.text_file(path::buffer_list);
    const auto report_at = [&](int line) { return Reporter{faults, path::buffer_list, line}; };
    if (!text) {
        report_at(0)(file_missing, "", text.reason(), "write the list; docs/formats.md describes it", true);
        return;
    }
    installation.listed_buffers = true;
    const BufferList list = read_buffer_list(*text);
    for (const auto& [line, number, path] : list.pictures) {
        const Reporter report = report_at(line);
        if (path.empty()) {
            report(buffer_line_empty, "", "the line is empty, and counts as the name of a picture", "remove the line",
                   true);
            continue;
        }
        installation.named.insert(path);
        if (made_by_program(number))
            report(buffer_taken, "", "buffer " + std::to_string(number) + " is created by the program", "use 0 to 20");
        if (installation.buffers.contains(number))
            report(buffer_taken, "", "buffer " + std::to_string(number) + " gets a second picture",
                   "give every picture its own \"+\"");
        PictureCheck picture = check_picture(path);
        if (!picture.bitmap)
            report(picture.code, "", path + " " + picture.fault, picture.advice, true, picture.nearest);
        else if (!picture.fault.empty())
            report(picture.code, "", path + " " + picture.fault, "create the picture again");
        installation.buffers[number] = std::move(picture.bitmap);
    }
    if (list.unknown) {
        report_at(list.unknown->line)(
            buffer_unknown, "", "there is no graphic buffer " + std::to_string(list.unknown->number),
            list.unknown->key == '+' ? "buffers are 0 to 24" : "remove the line", list.unknown->fails_list());
        installation.listed_buffers = false; // the rest is unknown
        return;
    }
    for (const int needed : {screen_buffer, backdrop_buffer}) {
        const auto found = installation.buffers.find(needed);
        const bool there = found != installation.buffers.end() && found->second;
        if (found != installation.buffers.end() && !there)
            continue; // reported above
        if (!there || found->second->w < layout_width || found->second->h < layout_height)
            report_at(0)(buffer_missing, "+" + std::to_string(needed),
                         there ? "the picture is smaller than 800 x 600" : "no picture for this buffer",
                         needed == screen_buffer ? "every screen is drawn into it"
                                                 : "text windows restore their background from it",
                         needed == screen_buffer);
    }
}

} // namespace vcc::kit
