// What the page reads: the installation, documents, pictures and sounds.
#include "vcckit/serve/session.h"

#include "vcckit/record/fields.h"
#include "vcckit/record/names.h"
#include "vcckit/record/window_fields.h"

#include "cc/option_rows.h"
#include "core/files.h"
#include "core/geometry.h"
#include "core/lines.h"
#include "display/buffers.h"
#include "platform/latin1.h"
#include "screen/buffer_list.h"
#include "screen/colours.h"
#include "sound/sound.h"
#include "text/fonts.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <functional>
#include <set>

namespace vcc::kit::edit {

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

constexpr std::size_t sound_size_limit = 64u << 20;

struct ViewRow {
    const char* word;
    RenderedScreen screen;
    const char* document;
};
constexpr ViewRow views[] = {
    {"menu", RenderedScreen::menu, "vcc"},
    {"options", RenderedScreen::options, "vcc_options"},
    {"help", RenderedScreen::help, "mess"},
    {"message", RenderedScreen::message, "mess"},
};

constexpr const char* language_names[languages.size()] = {"English", "Deutsch"};
constexpr const char* module_titles[module_count] = {"HQ", "Factory", "Battle", "Control centre"};

std::string parameter(const Parameters& parameters, const char* name) {
    const auto found = parameters.find(name);
    return found == parameters.end() ? std::string() : found->second;
}

/// A number in a request's address; nothing when it is not there.
std::optional<int> number_parameter(const Parameters& parameters, const char* name, int least, int most) {
    const std::string text = parameter(parameters, name);
    if (text.empty())
        return std::nullopt;
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc{} && end == text.data() + text.size() && number >= least && number <= most)
        return number;
    throw BadRequest(std::string(name) + " is " + std::to_string(least) + " to " + std::to_string(most));
}

/// The same for one that must be there.
int number_of_request(const Parameters& parameters, int least, int most) {
    const auto number = number_parameter(parameters, "number", least, most);
    return number ? *number : throw BadRequest("number is missing");
}

std::string colour_text(std::uint32_t colour) {
    char text[8];
    std::snprintf(text, sizeof text, "#%06x", unsigned{colour});
    return text;
}

template <typename Row>
json field_json(const Row& field, std::string_view kind, std::string_view meaning) {
    return {{"name", field.name}, {"kind", kind},     {"meaning", meaning}, {"unit", field.unit},
            {"min", field.min},   {"max", field.max}, {"size", field.max},  {"help", field.help}};
}

std::string_view kind_of(FieldForm form) {
    switch (form) {
    case FieldForm::number:
    case FieldForm::pair:
    case FieldForm::plain:
        return "number";
    case FieldForm::text:
    case FieldForm::styles:
        return "text";
    case FieldForm::word:
        return "choice";
    case FieldForm::flag:
    case FieldForm::shadow:
    case FieldForm::look:
        break;
    }
    return "flag";
}

json fields_json() {
    json fields = json::array();
    for (const Field& field : all_fields()) {
        const bool number = field.member || field.form == FieldForm::shadow;
        fields.push_back(field_json(field, kind_of(field.form),
                                    number           ? meaning_word(field.meaning)
                                    : field.size > 0 ? "text"
                                                     : "source"));
    }
    return fields;
}

json window_fields_json() {
    json fields = json::array();
    for (const WindowField& row : window_fields) {
        fields.push_back(field_json(row, row.key.empty() ? "text" : "number", "window"));
        fields.back()["key"] = row.key;
    }
    return fields;
}

json buffer_fields_json() {
    const WindowField picture{.name = "picture",
                              .key = "",
                              .max = line_limit - 1,
                              .help = "the file that is in the buffer, a PCX picture of the installation"};
    return json::array({field_json(picture, "text", "picture")});
}

/// The pictures in the working folder, by their names.
json pictures_json() {
    std::set<std::string> names;
    std::error_code error;
    for (fs::recursive_directory_iterator each(".", error), end; !error && each != end; each.increment(error))
        if (const std::string ending = each->path().extension(); ending == ".pcx" || ending == ".PCX")
            names.insert(each->path().lexically_normal().string());
    return names;
}

json views_json() {
    json all = json::array();
    for (const ViewRow& row : views) {
        json view{{"view", row.word}, {"document", row.document}};
        if (row.screen == RenderedScreen::options) {
            for (const OptionRow& option : option_rows()) {
                std::string name(option.name);
                std::ranges::replace(name, '_', ' ');
                view["rows"].push_back(
                    {{"number", static_cast<int>(option.row)}, {"name", name}, {"button", option.button}});
            }
            for (int module = 0; module < module_count; ++module)
                view["modules"].push_back({{"number", module}, {"name", module_titles[module]}});
        }
        all.push_back(std::move(view));
    }
    return all;
}

/// Red, green, blue and 255 of each pixel.
std::string rgba_of(const BITMAP& picture) {
    const auto width = static_cast<std::size_t>(picture.w), height = static_cast<std::size_t>(picture.h);
    std::string bytes(width * height * 4, '\0');
    auto* out = reinterpret_cast<unsigned char*>(bytes.data());
    for (std::size_t y = 0; y < height; ++y) {
        const auto* const line = reinterpret_cast<const std::uint32_t*>(picture.line[y]);
        for (std::size_t x = 0; x < width; ++x, out += 4) {
            out[0] = static_cast<unsigned char>(line[x] >> 16);
            out[1] = static_cast<unsigned char>(line[x] >> 8);
            out[2] = static_cast<unsigned char>(line[x]);
            out[3] = 255;
        }
    }
    return bytes;
}

/// The smallest rectangle with all pixels that differ; without any an empty one.
Rect part_that_differs(const std::string& before, const std::string& now, int width) {
    const std::size_t pitch = 4 * static_cast<std::size_t>(width);
    Rect part{width, static_cast<int>(now.size() / pitch), 0, 0};
    for (std::size_t at = 0; at < now.size(); at += pitch) {
        if (std::memcmp(before.data() + at, now.data() + at, pitch) == 0)
            continue;
        const auto begin = now.begin() + static_cast<std::ptrdiff_t>(at),
                   end = begin + static_cast<std::ptrdiff_t>(pitch);
        const auto first = std::mismatch(begin, end, before.begin() + static_cast<std::ptrdiff_t>(at)).first - begin;
        std::ptrdiff_t last = end - begin;
        while (begin[last - 1] == before[at + static_cast<std::size_t>(last) - 1])
            --last;
        const int y = static_cast<int>(at / pitch);
        part = {std::min(part.x1, static_cast<int>(first / 4)), std::min(part.y1, y),
                std::max(part.x2, static_cast<int>((last + 3) / 4)), y + 1};
    }
    return part.x1 < part.x2 ? part : Rect{};
}

/// The picture that a request's address asks for.
RenderRequest render_request_of(const Parameters& parameters) {
    RenderRequest request;
    const std::string view = parameter(parameters, "view"), language = parameter(parameters, "language");
    const auto* const row = std::ranges::find_if(views, [&](const ViewRow& each) { return view == each.word; });
    if (row == std::end(views))
        throw BadRequest("view is menu, options, help or message");
    request.screen = row->screen;
    request.language = language.empty() ? 0 : language_of(language);
    request.row = number_parameter(parameters, "row", 0, 11);
    request.module = number_parameter(parameters, "module", 0, module_count - 1);
    request.hover = number_parameter(parameters, "hover", 0, slot_limit - 1);
    request.pressed = number_parameter(parameters, "pressed", 0, slot_limit - 1);
    return request;
}

/// The picture made smaller by a whole number, so that it is at most so many pixels wide and high; what is not drawn of
/// it is grey.
RgbPicture reduced(const RgbPicture& picture, int most) {
    constexpr std::array<std::uint8_t, 3> not_drawn{255, 0, 255}, grey{64, 64, 64};
    const auto [shorter, longer] = std::minmax(picture.width, picture.height);
    const int step = std::min((longer + most - 1) / most, shorter);
    RgbPicture out{picture.width / step, picture.height / step, {}};
    for (int y = 0; y < out.height; ++y)
        for (int x = 0; x < out.width; ++x) {
            std::array<int, 3> sums{};
            for (int i = 0; i < step * step; ++i) {
                const auto* from = &picture.rgb[3 * static_cast<std::size_t>((y * step + i / step) * picture.width +
                                                                             x * step + i % step)];
                from = std::equal(not_drawn.begin(), not_drawn.end(), from) ? grey.data() : from;
                std::transform(sums.begin(), sums.end(), from, sums.begin(), std::plus());
            }
            for (const int sum : sums)
                out.rgb.push_back(static_cast<std::uint8_t>(sum / (step * step)));
        }
    return out;
}

json numbered(const std::string& name, int number) {
    return {{"name", name}, {"number", number}};
}

/// Names that may stand for numbers, with what the installation says of each.
json names_json() {
    json names = json::object();
    for (const Meaning meaning : all_meanings) {
        if (meaning == Meaning::number)
            continue;
        json list = json::array();
        for (const std::string& name : names_of(meaning)) {
            const int number = number_of_name(meaning, name).value_or(0);
            json entry = numbered(name, number);
            if (meaning == Meaning::colour && is_colour(number))
                entry["rgb"] = colour_text(colour_table[static_cast<std::size_t>(number)]);
            if (meaning == Meaning::font)
                entry["cell"] = {cell_width(number), cell_height(number)};
            list.push_back(std::move(entry));
        }
        names[meaning == Meaning::focus ? "toggle" : std::string(meaning_word(meaning))] = std::move(list);
    }
    for (int number = 1; number < sound_entry_count; ++number) {
        const SoundEntry& entry = sound_entries[static_cast<std::size_t>(number)];
        if (!entry.file.empty())
            names["sound"].push_back(
                numbered(platform::utf8_from_latin1(entry.name.empty() ? entry.file : entry.name), number));
    }
    json buffers = json::array();
    const BufferList list = read_buffer_list(read_file(path::buffer_list).value_or(""));
    for (int number = 0; number < graphic_buffer_count; ++number) {
        const BITMAP* const bitmap = graphic_buffer(number);
        if (!bitmap)
            continue;
        json entry =
            numbered(name_of_number(Meaning::buffer, number).value_or("buffer " + std::to_string(number)), number);
        entry["width"] = bitmap->w;
        entry["height"] = bitmap->h;
        for (const ListedPicture& picture : list.pictures)
            if (picture.buffer == number)
                entry["file"] = platform::utf8_from_latin1(picture.path);
        buffers.push_back(std::move(entry));
    }
    names["buffer"] = std::move(buffers);
    return names;
}

} // namespace

/// The picture that a request's address asks for.
Session::Drawn Session::draw(const Parameters& parameters) {
    const RenderRequest request = render_request_of(parameters);
    auto picture = renderer_->draw(request);
    if (!picture)
        throw Refused(picture.reason());
    const auto* const view = std::ranges::find(views, request.screen, &ViewRow::screen);
    const auto document = workspace_.documents().find(view->document);
    return {std::move(*picture), document == workspace_.documents().end() ? 0 : document->second.revision};
}

Answer Session::project(const Parameters&) {
    json spoken = json::array(), documents = json::array(), colours = json::array();
    for (std::size_t i = 0; i < languages.size(); ++i)
        spoken.push_back({{"code", languages[i].code}, {"name", language_names[i]}});
    for (const auto& [name, document] : workspace_.documents())
        documents.push_back(name);
    for (const std::uint32_t colour : colour_table)
        colours.push_back(colour_text(colour));
    json recovered;
    for (const auto& [name, left] : workspace_.offered()) {
        recovered["documents"].push_back(name);
        recovered["when"] = workspace_.offered_when();
    }
    return {.body = text_of_json({{"session", session_},
                                  {"folder", folder()},
                                  {"screens_folder", screens_folder()},
                                  {"languages", std::move(spoken)},
                                  {"documents", std::move(documents)},
                                  {"views", views_json()},
                                  {"fields", fields_json()},
                                  {"window_fields", window_fields_json()},
                                  {"buffer_fields", buffer_fields_json()},
                                  {"pictures", pictures_json()},
                                  {"names", names_json()},
                                  {"colours", std::move(colours)},
                                  {"recovered", std::move(recovered)}})};
}

Answer Session::document(const Parameters& parameters) {
    return {.body = text_of_json(json_of(named(parameter(parameters, "name"))))};
}

std::int64_t Session::keep_shown(const std::string& rgba) {
    constexpr std::size_t most = 4; ///< pages that are drawn in at the same time
    const std::int64_t number = shown_.empty() ? 1 : shown_.rbegin()->first + 1;
    shown_[number] = rgba;
    if (shown_.size() > most)
        shown_.erase(shown_.begin());
    return number;
}

/// The picture that a change asks for along with itself: what it is to `told`, and those of its pixels that the page
/// does not have.
std::string Session::add_picture(const json& body, json& told) {
    if (!body.contains("view") || !body["view"].is_object())
        return {};
    Parameters parameters;
    for (const auto& [name, value] : body["view"].items())
        if (!value.is_null())
            parameters[name] = value.is_string() ? value.get<std::string>() : value.dump();
    Drawn drawn;
    try {
        drawn = draw(parameters);
    } catch (const Refused& refused) {
        told["picture"] = {{"fault", refused.what()}};
        return {};
    }
    const std::string rgba = rgba_of(*drawn.picture);
    const auto have = number_entry(body, "have", 0, INT64_MAX);
    const auto known = have ? shown_.find(*have) : shown_.end();
    const Rect part = known == shown_.end() || known->second.size() != rgba.size()
                          ? Rect{0, 0, drawn.picture->w, drawn.picture->h}
                          : part_that_differs(known->second, rgba, drawn.picture->w);
    told["picture"] = {{"number", keep_shown(rgba)},
                       {"rect", {part.x1, part.y1, part.x2 - part.x1, part.y2 - part.y1}},
                       {"revision", drawn.revision}};
    std::string pixels;
    const auto at = [&](int x, int y) { return 4 * static_cast<std::size_t>(y * drawn.picture->w + x); };
    for (int y = part.y1; y < part.y2; ++y)
        pixels.append(rgba, at(part.x1, y), at(part.x2, y) - at(part.x1, y));
    return pixels;
}

Answer Session::picture(const Parameters& parameters) {
    const Drawn drawn = draw(parameters);
    std::string rgba = rgba_of(*drawn.picture);
    const std::int64_t number = parameters.contains("keep") ? keep_shown(rgba) : 0;
    return {.type = "application/octet-stream",
            .body = std::move(rgba),
            .headers = {{"X-Revision", std::to_string(drawn.revision)}, {"X-Number", std::to_string(number)}}};
}

Answer Session::picture_png(const Parameters& parameters) {
    return {.type = "image/png", .body = png_bytes(rgb_of(*draw(parameters).picture))};
}

Answer Session::buffer_png(const Parameters& parameters) {
    const int number = number_of_request(parameters, 0, graphic_buffer_count - 1);
    const auto most = number_parameter(parameters, "most", 16, 4096); // pixels
    BITMAP* const bitmap = renderer_->buffer(number);
    if (!bitmap)
        throw BadRequest("buffer " + std::to_string(number) + " is empty", status::not_found);
    const RgbPicture picture = rgb_of(*bitmap);
    return {.type = "image/png", .body = png_bytes(most ? reduced(picture, *most) : picture)};
}

Answer Session::sound(const Parameters& parameters) {
    const int number = number_of_request(parameters, 1, sound_entry_count - 1);
    const SoundEntry& entry = sound_entries[static_cast<std::size_t>(number)];
    auto bytes = entry.file.empty() ? Failure{"names no file"} : read_file(sound_path(entry), sound_size_limit);
    if (!bytes)
        throw BadRequest("sound " + std::to_string(number) + " " + bytes.reason(), status::not_found);
    return {.type = "audio/wav", .body = std::move(*bytes)};
}

} // namespace vcc::kit::edit
