// Reading the line-oriented text files of an installation.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vcc {

inline constexpr std::size_t line_limit = 244; ///< characters of a line; a longer line is read as several

/// Hands out the lines of a text in memory. A line is at most `limit` characters with its line feed; the line feed (and
/// a carriage return before it) is not part of what next() returns; a zero byte ends the line's text.
class LineReader {
public:
    /// `text` must outlive the reader.
    explicit LineReader(std::string_view text) : text_(text) {}

    /// The next line, or nothing at the end of the text.
    std::optional<std::string_view> next(std::size_t limit = line_limit);

    /// Number of lines (pieces) handed out so far, for messages.
    int line_number() const { return line_number_; }

    /// Byte offset of the next line; seek() goes back to one.
    std::size_t position() const { return position_; }
    void seek(std::size_t position) { position_ = position; }

private:
    std::string_view text_;
    std::size_t position_ = 0;
    int line_number_ = 0;
};

} // namespace vcc
