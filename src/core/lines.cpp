#include "core/lines.h"

#include "core/text.h"

#include <algorithm>

namespace vcc {

std::optional<std::string_view> LineReader::next(std::size_t limit) {
    if (position_ >= text_.size() || limit == 0)
        return std::nullopt;
    const std::string_view rest = text_.substr(position_);
    const std::size_t line_feed = rest.find('\n');
    const bool whole = line_feed != std::string_view::npos && line_feed < limit;
    std::string_view piece = rest.substr(0, whole ? line_feed : limit);
    position_ += whole ? line_feed + 1 : piece.size();
    ++line_number_;
    if (whole && piece.ends_with('\r'))
        piece.remove_suffix(1);
    return cut_at(piece, '\0');
}

} // namespace vcc
