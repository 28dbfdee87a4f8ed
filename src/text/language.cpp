#include "text/language.h"

#include "core/files.h"
#include "core/lines.h"
#include "core/log.h"
#include "core/text.h"

#include <array>
#include <cstddef>

namespace vcc {

int language = 1;
std::string slot_prefix;
std::string text_window_prefix;

namespace {

struct LanguageRow {
    const char *slots, *text_windows, *messages;
};
constexpr std::array<LanguageRow, 2> language_rows{{
    {"tools\\language\\english\\e_", "tools/language/english/e_", "tools\\language\\english\\txt\\messages.eng"},
    {"tools\\language\\german\\g_", "tools/language/german/g_", "tools\\language\\german\\txt\\messages.ger"},
}};
constexpr const char* language_file = "tools\\language.ini";
constexpr std::size_t language_line_limit = 80;

std::array<std::array<std::string, message_limit>, language_rows.size() + 1> message_catalogue;

std::array<std::string, message_limit>& current_block() {
    const auto block = static_cast<std::size_t>(language);
    return message_catalogue[block < message_catalogue.size() ? block : 0];
}

void use_prefixes(const LanguageRow& row) {
    slot_prefix = row.slots;
    text_window_prefix = row.text_windows;
}

// Path of the message file that the language file leads to; empty when it leads nowhere.
std::string choose_language() {
    const auto file = read_file(language_file);
    if (!file) {
        write_log("Error reading language.ini");
        return {};
    }
    const std::optional<std::string_view> line = LineReader(*file).next(language_line_limit);
    if (!line) {
        write_log("Error reading language variables from language.ini");
        return {};
    }
    if (!line->starts_with('1') && !line->starts_with('2'))
        return std::string(*line);
    language = line->front() - '0';
    const LanguageRow& row = language_rows[static_cast<std::size_t>(language - 1)];
    use_prefixes(row);
    return row.messages;
}

} // namespace

void load_language() {
    use_prefixes(language_rows[0]);
    load_messages(choose_language());
}

int load_messages(const std::string& path) {
    const auto file = read_file(path);
    if (!file) {
        write_log("Error reading message file");
        return 0;
    }
    LineReader lines(*file);
    int index = -1, stored = 0; // no index line yet
    while (const std::optional<std::string_view> line = lines.next()) {
        if (line->starts_with('#'))
            continue;
        if (line->starts_with('+')) {
            index = to_number(line->substr(1));
            if (index >= message_limit)
                break;
        } else if (index >= 0) {
            current_block()[static_cast<std::size_t>(index)] = *line;
            ++stored;
        }
    }
    return stored;
}

std::string_view message(int index) {
    if (index < 0 || index >= message_limit)
        return {};
    return current_block()[static_cast<std::size_t>(index)];
}

} // namespace vcc
