#include "core/text.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace vcc {

void pad_text(std::string& text, int length, char fill) {
    const std::size_t padded = length > 0 ? static_cast<std::size_t>(length) - 1 : 0;
    if (text.size() < padded)
        text.append(padded - text.size(), fill);
}

int trim_right(std::string& text) {
    text.erase(text.find_last_not_of(' ') + 1); // npos + 1 is 0: a blank text becomes empty
    return static_cast<int>(text.size());
}

std::string trim_left(std::string_view text) {
    return std::string(text.substr(std::min(text.find_first_not_of(' '), text.size())));
}

bool is_blank(std::string_view text) {
    return text.find_first_not_of(' ') == std::string_view::npos;
}

std::string_view cut_at(std::string_view text, char stop) {
    return text.substr(0, text.find(stop));
}

std::string replace_extension(std::string_view name, std::string_view extension) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return std::string(extension);
    return std::string(name.substr(0, dot)).append(extension);
}

int to_number(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(white_space), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    int value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range)
        return text.starts_with('-') ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    return value;
}

} // namespace vcc
