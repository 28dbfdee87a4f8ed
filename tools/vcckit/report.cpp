#include "report.h"

#include "utf8.h"

#include <cstdio>
#include <utility>

namespace vcc::kit {

namespace {

/// What came from a file must not steer a terminal.
std::string harmless(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = '?';
    return text;
}

/// File names and texts of an installation are Windows Latin-1.
std::string utf8(const std::string& latin1) {
    std::string text;
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
        } else {
            text += static_cast<char>(0xC0 | byte >> 6);
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

std::string quoted_utf8(const std::string& name) {
    std::string text = "\"";
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (byte < 0x20) {
            char escape[8] = {};
            std::snprintf(escape, sizeof escape, "\\u%04x", byte);
            text += escape;
        } else {
            text += c;
        }
    }
    return text + '"';
}

std::string quoted(const std::string& latin1) {
    return quoted_utf8(utf8(latin1));
}

} // namespace

std::string text_of_fault(const Fault& fault, bool colours) {
    std::string place = fault.file;
    if (fault.line > 0)
        place += ":" + std::to_string(fault.line);
    if (fault.record >= 0)
        place += (fault.file.ends_with(".tgl") ? ": toggle " : ": slot ") + std::to_string(fault.record);
    if (!fault.field.empty())
        place += ": " + fault.field;
    place = harmless(std::move(place));
    const std::string problem = utf8(harmless(fault.problem));
    const std::string advice = fault.advice.empty() ? "" : " - " + utf8(fault.advice);
    if (!colours)
        return utf8(place) + ": " + problem + advice;
    return "\x1b[1m" + utf8(place) + ":\x1b[0m " + (fault.fatal ? "\x1b[31m" : "\x1b[33m") + problem + "\x1b[0m" +
           advice;
}

std::string json_of_faults(const Faults& faults, const std::string& installation) {
    // The folder comes from the command line, which is UTF-8 unless the system is an old one.
    std::string json =
        "{\"installation\": " + (is_utf8(installation) ? quoted_utf8(installation) : quoted(installation)) +
        ", \"faults\": [";
    for (const Fault& fault : faults) {
        json += (&fault == &faults.front() ? "\n" : ",\n");
        json += "  {\"file\": " + quoted(fault.file);
        if (fault.line > 0)
            json += ", \"line\": " + std::to_string(fault.line);
        if (fault.record >= 0)
            json += ", \"record\": " + std::to_string(fault.record);
        if (!fault.field.empty())
            json += ", \"field\": " + quoted(fault.field);
        json += ", \"problem\": " + quoted(fault.problem) + ", \"advice\": " + quoted(fault.advice) +
                ", \"fatal\": " + (fault.fatal ? "true" : "false") + "}";
    }
    return json + (faults.empty() ? "]}\n" : "\n]}\n");
}

} // namespace vcc::kit
