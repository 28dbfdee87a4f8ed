// Reading the line-oriented text files of an installation.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vcc {

inline constexpr std::size_t line_limit = 244; ///< characters of a line; a longer line is read as several

/// Splits a text in memory into lines of at most `limit` characters. next() drops the line feed, a carriage return
/// before it, and everything from a zero byte on.
class LineReader {
public:
    /// `text` must outlive the reader.
    explicit LineReader(std::string_view text) : text_(text) {}

    /// The next line, or nothing at the end of the text.
    std::optional<std::string_view> next(std::size_t limit = line_limit);

    /// Number of lines (pieces) returned so far, for messages.
    int line_number() const { return line_number_; }

private:
    std::string_view text_;
    std::size_t position_ = 0;
    int line_number_ = 0;
};

/// A line of a file whose "+NUMBER" lines say what the lines after them belong to.
struct NumberedLine {
    enum class Kind { comment, number, text };
    Kind kind;
    std::optional<int> number; ///< the latest; nothing before the first
    std::string_view text;     ///< the whole line
};

/// Reads such a file; a line that begins with "#" is a comment.
class NumberedLines {
public:
    /// `text` must outlive the reader.
    explicit NumberedLines(std::string_view text) : lines_(text) {}

    std::optional<NumberedLine> next();
    int line_number() const { return lines_.line_number(); }

private:
    LineReader lines_;
    std::optional<int> number_;
};

} // namespace vcc
