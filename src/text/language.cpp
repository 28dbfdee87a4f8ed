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

std::array<std::array<std::string, message_limit>, languages.size() + 1> message_catalogue;

std::array<std::string, message_limit>& current_block() {
    const auto block = static_cast<std::size_t>(language);
    return message_catalogue[block < message_catalogue.size() ? block : 0];
}

void use_prefixes(const LanguageRow& row) {
    slot_prefix = std::string("tools\\language\\").append(row.folder).append("\\").append(row.prefix);
    text_window_prefix = std::string("tools/language/").append(row.folder).append("/").append(row.prefix);
}

std::string text_file(int number, std::string_view LanguageRow::*name) {
    const LanguageRow& row = languages[static_cast<std::size_t>(number - 1)];
    return std::string("tools\\language\\").append(row.folder).append("\\txt\\").append(row.*name);
}

/// The language that the language file names. The reason is a log line; empty if the file names none.
Result<int> chosen_language() {
    const auto file = read_file(path::language_choice);
    if (!file)
        return Failure{"Error reading language.ini"};
    const std::optional<std::string_view> line = LineReader(*file).next(language_line_limit);
    if (!line)
        return Failure{"Error reading language variables from language.ini"};
    if (!line->starts_with('1') && !line->starts_with('2'))
        return Failure{};
    return line->front() - '0';
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
    const Result<int> chosen = chosen_language();
    if (chosen)
        use_language(*chosen);
    else if (!chosen.reason().empty())
        write_log(chosen.reason());
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
        current_block()[static_cast<std::size_t>(index)] = line->text;
        ++stored;
    }
    return stored;
}

std::string_view message(int index) {
    if (index < 0 || index >= message_limit)
        return {};
    return current_block()[static_cast<std::size_t>(index)];
}

} // namespace vcc
