// The command show: files of an installation as readable text.
#include "vcckit/check/installation.h"
#include "vcckit/commands/commands.h"
#include "vcckit/media/themes.h"
#include "vcckit/record/fields.h"
#include "vcckit/record/setting_rows.h"
#include "vcckit/record/slot_bytes.h"

#include "core/files.h"
#include "core/lines.h"
#include "core/log.h"
#include "core/text.h"
#include "display/picture.h"
#include "media/avi_header.h"
#include "platform/latin1.h"
#include "sound/wav_file.h"

#include <cstdio>

namespace vcc::kit {

namespace {

std::string utf8(std::string_view latin1) {
    std::string text(latin1);
    for (char& c : text) // a file must not control the terminal
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = c == '\t' ? ' ' : '?';
    return platform::utf8_from_latin1(text);
}

std::string shown_number(const Field& field, std::int32_t value) {
    const auto name = name_of_number(field.meaning, value);
    return std::to_string(value) + (name && *name != std::to_string(value) ? " " + *name : "");
}

/// All fields that differ from an empty record.
Result<std::string> shown_records(const std::string&, std::string_view bytes) {
    const auto [records, fault] = check_slot_file(bytes);
    if (!fault.empty())
        return Failure{fault};
    const Slot empty = empty_slot();
    std::string text = std::to_string(records.size()) + " records\n";
    for (std::size_t i = 0; i < records.size(); ++i) {
        text += "\n" + std::to_string(i) + "\n";
        for (const Field& field : number_fields())
            if (records[i].*field.member != empty.*field.member)
                text += "  " + std::string(field.name) + " = " + shown_number(field, records[i].*field.member) + "\n";
        for (const Field& field : text_fields())
            if (const std::string_view value = cut_at(bytes_of(records[i], field), '\0'); !value.empty())
                text += "  " + std::string(field.name) + " = \"" + utf8(value) + "\"\n";
    }
    return text;
}

struct KeyMeaning {
    std::string_view key, meaning;
};
constexpr KeyMeaning window_keys[] = {
    {"+", "window"},         {"xo", "left edge"},    {"yo", "top edge"},
    {"xu", "right edge"},    {"yu", "bottom edge"},  {"f", "title colour"},
    {"c", "colour"},         {"-", "style"},         {"r", "red"},
    {"g", "green"},          {"b", "blue"},          {"h", "opacity"},
    {"o", "opening sound"},  {"e", "closing sound"}, {"s", "shadow in pixels"},
    {"l", "grid in pixels"}, {"t", "font"},          {"w", "edges in pixels"},
    {"m", "pointer offset"}, {"#", "comment"},
};
constexpr KeyMeaning buffer_keys[] = {{"+", "buffer"}, {"#", "comment"}, {"*", "passed over"}, {"", "picture"}};
constexpr KeyMeaning sound_keys[] = {{"+", "entry"},  {"&", "effect"}, {"\xA7", "theme"},
                                     {"$", "folder"}, {"-", "file"},   {"*", "start of the sound system"},
                                     {"#", "comment"}};
constexpr KeyMeaning message_keys[] = {{"+", "message"}, {"#", "comment"}, {"", "text"}};
constexpr KeyMeaning help_keys[] = {{"+", "entry"}, {"-", "text"}, {"#", "comment"}, {"", "header"}};

/// All lines with their numbers and the meanings of their keys; one key may stand for all other lines.
template <const auto& keys>
Result<std::string> shown_lines(const std::string&, std::string_view bytes) {
    std::string text;
    LineReader lines(bytes);
    while (const auto line = lines.next()) {
        std::string meaning = "passed over", value(*line);
        for (const KeyMeaning& row : keys) {
            if (line->empty() || !line->starts_with(row.key))
                continue;
            meaning = row.meaning;
            value = line->substr(row.key.size());
            break;
        }
        text += format_text("%4d  %-16s ", lines.line_number(), meaning.c_str()) + utf8(value) + "\n";
    }
    return text;
}

Result<std::string> shown_picture(const std::string&, std::string_view bytes) {
    const PictureHeader header =
        read_picture_header({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    if (!header.readable)
        return Failure{unfit_picture};
    return format_text("PCX picture, %d x %d pixels, %d bits\n", header.width, header.height, header.bits);
}

Result<std::string> shown_sound(const std::string& path, std::string_view) {
    const WavHeader header = parse_wav_header(path);
    if (header.data_offset == 0)
        return Failure{unfit_wav};
    const double seconds = static_cast<double>(header.data_length) / header.frame_bytes() / header.rate;
    const std::string loop = loop_fault(path);
    return format_text("WAV sound, %d Hz, %d bits, %s, %.2f s, %ld bytes from byte %ld on\nas a theme: %s\n",
                       header.rate, header.bits, header.channels == 1 ? "mono" : "stereo", seconds, header.data_length,
                       header.data_offset, loop.empty() ? "loops without a seam" : loop.c_str());
}

Result<std::string> shown_film(const std::string&, std::string_view bytes) {
    const platform::AviHeader header = platform::read_avi_header(bytes);
    if (header.error != platform::AviError::none)
        return Failure{"is not an AVI film that the program can show"};
    return format_text("AVI film, %d x %d pixels, %.2f frames per second, %u frames\n", header.width, header.height,
                       static_cast<double>(header.rate) / header.scale, header.length);
}

/// Settings with their effect in the program.
Result<std::string> shown_settings(const std::string&, std::string_view bytes) {
    std::string text, section;
    LineReader lines(bytes);
    while (const auto line = lines.next(4096)) {
        std::string entry = trim_left(*line);
        for (char& c : entry)
            c = static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        trim_right(entry);
        if (entry.starts_with('[') && entry.ends_with(']'))
            section = entry.substr(1, entry.size() - 2);
        const std::size_t equals = entry.find('=');
        const SettingRow* row = nullptr;
        if (equals != std::string::npos && !entry.starts_with('#')) {
            std::string key = entry.substr(0, equals);
            trim_right(key);
            row = find_setting_row(section, key);
        }
        text += row ? format_text("%-40s ", entry.c_str()) + std::string(row->help) : entry;
        text += "\n";
    }
    return text;
}

/// In any letter case, because files copied from other systems may have capitals.
bool has_ending(std::string_view path, std::string_view ending) {
    return path.size() >= ending.size() &&
           platform::same_but_for_case(path.substr(path.size() - ending.size()), ending);
}

struct Format {
    std::string_view ending;
    Result<std::string> (*show)(const std::string& path, std::string_view bytes); ///< a text in UTF-8
};
constexpr Format formats[] = {
    {".slt", shown_records},
    {".tgl", shown_records},
    {".tw", shown_lines<window_keys>},
    {".buf", shown_lines<buffer_keys>},
    {".snd", shown_lines<sound_keys>},
    {".eng", shown_lines<message_keys>},
    {".ger", shown_lines<message_keys>},
    {".hlp", shown_lines<help_keys>},
    {".cfg", shown_settings},
    {".pcx", shown_picture},
    {".wav", shown_sound},
    {".avi", shown_film},
};

Result<std::string> shown_file(const std::string& path) {
    constexpr std::size_t shown_limit = 512u << 20;
    const auto bytes = read_file(path, shown_limit);
    if (!bytes)
        return Failure{"cannot be read"};
    for (const Format& format : formats)
        if (has_ending(path, format.ending))
            return format.show(path, *bytes);
    return Failure{"has no known extension"};
}

} // namespace

int run_show(const std::string& file) {
    const Library library;
    const auto text = shown_file(file);
    if (!text)
        return complain(file + " " + text.reason());
    return std::fwrite(text->data(), 1, text->size(), stdout) == text->size() ? exit_clean : exit_unusable;
}

} // namespace vcc::kit
