#include "text/language.h"

#include "core/files.h"
#include "core/installation.h"
#include "core/lines.h"
#include "core/log.h"
#include "text/screen_texts.h"

#include <array>
#include <cstddef>

namespace vcc {

namespace {

constexpr std::size_t language_line_limit = 80;

std::array<std::string, message_limit> message_catalogue; ///< of the language in use

void use_prefixes(const LanguageRow& row) {
    slot_prefix = std::string("tools\\language\\").append(row.folder).append("\\").append(row.prefix);
    text_window_prefix = std::string("tools/language/").append(row.folder).append("/").append(row.prefix);
}

std::string text_file(int number, std::string_view LanguageRow::*name) {
    const LanguageRow& row = languages[static_cast<std::size_t>(number - 1)];
    return std::string("tools\\language\\").append(row.folder).append("\\txt\\").append(row.*name);
}

} // namespace

std::string message_file(int number) {
    return text_file(number, &LanguageRow::messages);
}

std::string screen_text_file(int number) {
    return text_file(number, &LanguageRow::screen_texts);
}

void use_language(int number) {
    language = number;
    use_prefixes(languages[static_cast<std::size_t>(number - 1)]);
}

void load_language() {
    use_prefixes(languages[0]);
    const auto file = read_file(path::language_choice);
    const auto line = file ? LineReader(*file).next(language_line_limit) : std::nullopt;
    if (!line)
        write_log(file ? "Error reading language variables from language.ini" : "Error reading language.ini");
    const bool chosen = line && (line->starts_with('1') || line->starts_with('2'));
    if (chosen)
        use_language(line->front() - '0');
    load_messages(chosen ? message_file(language) : "");
    load_screen_texts(screen_text_file(language));
}

int load_messages(const std::string& path) {
    const auto file = read_file(path);
    if (!file) {
        write_log("Error reading message file");
        return 0;
    }
    NumberedLines lines(*file);
    int stored = 0;
    while (const auto line = lines.next()) {
        const int index = line->number.value_or(-1);
        if (index >= message_limit)
            break;
        if (line->kind != NumberedLine::Kind::text || index < 0)
            continue;
        message_catalogue[static_cast<std::size_t>(index)] = line->text;
        ++stored;
    }
    return stored;
}

std::string_view message(int index) {
    if (index < 0 || index >= message_limit)
        return {};
    return message_catalogue[static_cast<std::size_t>(index)];
}

} // namespace vcc
