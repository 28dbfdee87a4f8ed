#include "core/lines.h"

#include "core/text.h"

namespace vcc {

std::optional<std::string_view> LineReader::next(std::size_t limit) {
    if (position_ >= text_.size() || limit == 0)
        return std::nullopt;
    const std::string_view rest = text_.substr(position_);
    const std::size_t line_feed = rest.find('\n');
    const std::size_t end = line_feed - std::size_t{rest.substr(0, line_feed).ends_with('\r')};
    const bool whole = line_feed != std::string_view::npos && end <= limit;
    const std::string_view piece = rest.substr(0, whole ? end : limit);
    position_ += whole ? line_feed + 1 : piece.size();
    ++line_number_;
    return cut_at(piece, '\0');
}

std::optional<NumberedLine> NumberedLines::next() {
    using enum NumberedLine::Kind;
    const std::optional<std::string_view> line = lines_.next();
    if (!line)
        return std::nullopt;
    if (line->starts_with('#'))
        return NumberedLine{comment, number_, *line};
    if (!line->starts_with('+'))
        return NumberedLine{text, number_, *line};
    number_ = to_number(line->substr(1));
    return NumberedLine{number, number_, *line};
}

} // namespace vcc
