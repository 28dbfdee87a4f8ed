#include "vcckit/faults/report.h"

#include "vcckit/text/latin1.h"
#include "vcckit/text/lines.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <unistd.h>

namespace vcc::kit {

namespace {

/// Text from a file must not control the terminal.
std::string harmless(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = '?';
    return text;
}

/// "slot 3", "slots 8 to 11, 16"
std::string records_text(const Fault& fault) {
    std::vector<int> records{fault.record};
    records.insert(records.end(), fault.more_records.begin(), fault.more_records.end());
    std::string text = fault.file.ends_with(".tgl") ? "toggle" : "slot";
    text += records.size() > 1 ? "s " : " ";
    for (std::size_t i = 0; i < records.size();) {
        std::size_t last = i;
        while (last + 1 < records.size() && records[last + 1] == records[last] + 1)
            ++last;
        text += (i == 0 ? "" : ", ") + std::to_string(records[i]);
        if (last > i)
            text += (last == i + 1 ? ", " : " to ") + std::to_string(records[last]);
        i = last + 1;
    }
    return text;
}

std::string place_text(const Fault& fault) {
    std::string place = fault.file;
    for (const std::string& file : fault.more_files)
        place += ", " + file;
    if (fault.line > 0)
        place += ":" + std::to_string(fault.line);
    if (fault.column > 0)
        place += ":" + std::to_string(fault.column);
    if (fault.record >= 0 && fault.column == 0)
        place += ": " + records_text(fault);
    return harmless(std::move(place));
}

// Parameters of the terminal's sequences.
constexpr const char *bold = "1", *red = "31", *yellow = "33", *cyan = "36";

/// A text as a terminal shows it in a colour, or as it is.
std::string painted(const std::string& text, const char* colour, bool colours) {
    return colours ? std::string("\x1b[") + colour + "m" + text + "\x1b[0m" : text;
}

const char* colour_of(const Fault& fault) {
    return fault.fatal || fault.column > 0 ? red : yellow;
}

std::string_view line_of(std::string_view text, int line) {
    const std::vector<std::string_view> lines = lines_of(text);
    if (line < 1 || static_cast<std::size_t>(line) > lines.size())
        return {};
    text = lines[static_cast<std::size_t>(line) - 1];
    return text.ends_with('\r') ? text.substr(0, text.size() - 1) : text;
}

/// The number of bytes of the first characters of a text.
std::size_t bytes_of_characters(std::string_view text, int characters) {
    std::size_t bytes = 0;
    for (; characters > 0 && bytes < text.size(); --characters)
        bytes += std::max<std::size_t>(1, first_character(text.substr(bytes)).size);
    return bytes;
}

std::string advice_text(const Fault& fault) {
    if (fault.nearest.empty())
        return as_utf8(fault.advice);
    return "did you mean " + fault.nearest + "?" + (fault.advice.empty() ? "" : " " + as_utf8(fault.advice));
}

/// Whether two faults differ only in the language of the file.
bool same_but_for_language(const Fault& a, const Fault& b) {
    const auto bare = [](const std::string& file) {
        const std::size_t name = file.rfind('/') + 1;
        const bool named =
            file.find("language/english/") != std::string::npos || file.find("language/german/") != std::string::npos;
        if (!named || file.size() < name + 2 || file[name + 1] != '_')
            return file;
        return file.substr(name + 2);
    };
    return a.file == b.file || bare(a.file) == bare(b.file);
}

bool same_cause(const Fault& a, const Fault& b) {
    return a.code == b.code && (a.column > 0 || a.where == b.where) && a.field == b.field && a.problem == b.problem &&
           a.advice == b.advice && a.nearest == b.nearest && a.line == b.line && a.column == b.column &&
           (a.record < 0) == (b.record < 0);
}

} // namespace

std::string with_slashes(std::string_view path) {
    std::string result(path);
    std::ranges::replace(result, '\\', '/');
    return result;
}

bool is_terminal(std::FILE* stream) {
    const char* const terminal = std::getenv("TERM");
    return ::isatty(::fileno(stream)) != 0 && (!terminal || std::string_view(terminal) != "dumb");
}

bool wants_colours(std::FILE* stream) {
    const char* const refused = std::getenv("NO_COLOR");
    return is_terminal(stream) && (!refused || *refused == '\0');
}

std::string text_of_fault(const Fault& fault, bool colours) {
    std::string text = painted(as_utf8(place_text(fault)) + ":", bold, colours) + " " +
                       painted(code_text(fault.code), colour_of(fault), colours) + " ";
    for (const std::string& part : {fault.where, fault.field})
        text += part.empty() ? "" : as_utf8(harmless(part)) + ": ";
    text += as_utf8(harmless(fault.problem));
    // The advice on a source follows its excerpt.
    if (fault.column == 0 && !(fault.advice.empty() && fault.nearest.empty()))
        text += " - " + advice_text(fault);
    return text;
}

std::string excerpt_of_fault(const Fault& fault, std::string_view source, bool colours) {
    constexpr std::size_t widest = 160;
    const std::string_view line = line_of(source, fault.line);
    const std::string number = std::to_string(fault.line), margin(number.size(), ' ');
    const std::size_t before = bytes_of_characters(line, fault.column - 1);
    std::string shown = harmless(std::string(line.substr(0, std::max(widest, before))));
    if (shown.size() < line.size())
        shown += " ...";
    std::string carets(static_cast<std::size_t>(std::max(fault.column - 1, 0)), ' ');
    const std::size_t room = std::max<std::size_t>(1, shown.size() - std::min(shown.size(), before));
    carets.append(fault.width > 0 ? std::min(static_cast<std::size_t>(fault.width), room) : room, '^');
    const auto bar = [&](const std::string& text) { return painted(text, cyan, colours); };
    std::string text = margin + bar(" |") + "\n" + bar(number + " | ") + shown + "\n" + margin + bar(" | ") +
                       painted(carets, colour_of(fault), colours) + "\n";
    if (!fault.advice.empty() || !fault.nearest.empty())
        text += margin + bar(" = ") + advice_text(fault) + "\n";
    return text;
}

Faults merged(Faults faults) {
    Faults by_record;
    for (Fault& fault : faults) {
        const auto known = std::ranges::find_if(
            by_record, [&](const Fault& other) { return fault.file == other.file && same_cause(fault, other); });
        if (known == by_record.end()) {
            by_record.push_back(std::move(fault));
            continue;
        }
        known->fatal = known->fatal || fault.fatal;
        if (fault.record != known->record &&
            std::ranges::find(known->more_records, fault.record) == known->more_records.end())
            known->more_records.push_back(fault.record);
    }
    Faults out;
    for (Fault& fault : by_record) {
        std::ranges::sort(fault.more_records);
        const auto known = std::ranges::find_if(out, [&](const Fault& other) {
            return same_cause(fault, other) && same_but_for_language(fault, other) && fault.record == other.record &&
                   fault.more_records == other.more_records;
        });
        if (known == out.end())
            out.push_back(std::move(fault));
        else
            known->more_files.push_back(fault.file);
    }
    return out;
}

std::string sum_of(const Faults& faults) {
    if (faults.empty())
        return "clean";
    return std::to_string(faults.size()) + (faults.size() == 1 ? " fault" : " faults");
}

} // namespace vcc::kit
