#include "vcckit/source/source_text.h"

#include "vcckit/faults/source_place.h"
#include "vcckit/text/latin1.h"

#include <algorithm>
#include <utility>

namespace vcc::kit {

namespace {

constexpr int most_dots = 32; ///< of a line outside texts; each dot of a key is a table, freed recursively

constexpr bool is_blank_beyond_ascii(char32_t c) {
    return c == 0x85 || c == 0xA0 || c == 0x1680 || c == 0x180E || (c >= 0x2000 && c <= 0x200B) || c == 0x2028 ||
           c == 0x2029 || c == 0x202F || c == 0x205F || c == 0x2060 || c == 0x3000 || c == 0xFEFF;
}

class TextScan {
public:
    explicit TextScan(std::string_view source) : rest_(source) {
        if (rest_.starts_with(byte_order_mark))
            rest_.remove_prefix(byte_order_mark.size());
    }

    std::optional<Fault> run() {
        while (!rest_.empty() && !ended_) {
            const Utf8Character next = first_character(rest_);
            if (next.size == 0)
                return fault("the source is not UTF-8", "save it in this encoding");
            rest_.remove_prefix(next.size);
            ++column_;
            if (std::string problem = take(next.code); !problem.empty())
                return fault(std::move(problem), "");
            if (next.code == '\n') {
                ++line_;
                column_ = 0;
                at_line_start_ = inside_ == outside;
                dots_ = 0;
            }
        }
        return std::nullopt;
    }

private:
    Fault fault(std::string problem, std::string advice) const {
        return source_fault(FaultCode::unfit_character, {line_, std::max(1, column_), 1}, "", "", std::move(problem),
                            std::move(advice));
    }

    std::string take(char32_t c) {
        if (inside_ == outside)
            return take_outside(c);
        if (inside_ == comment) {
            inside_ = c == '\n' ? outside : comment;
            return {};
        }
        if (in_word_ && c >= 0x80)
            return code_point_name(c) + " in a text that follows a word: put a blank before the quotation mark";
        if (!long_)
            take_in_line(c);
        else if (inside_ == '"')
            return take_long_text(c);
        else if (c == inside_)
            close_long();
        return {};
    }

    /// Whether a heading is well formed so far: the TOML reader assumes that a name follows the brackets.
    bool continues_heading(char32_t c) {
        const bool blank = c == ' ' || c == '\t';
        if (heading_ == Heading::none) {
            if (at_line_start_ && depth_ == 0 && c == '[')
                heading_ = Heading::bracket;
            at_line_start_ = at_line_start_ && blank;
            return true;
        }
        if (heading_ == Heading::bracket && c == '[') {
            heading_ = Heading::name;
            return true;
        }
        heading_ = blank ? Heading::name : Heading::none;
        const bool letter = (c | 0x20) >= 'a' && (c | 0x20) <= 'z';
        return blank || letter || (c >= '0' && c <= '9') || c == '_' || c == '-' || c == '"' || c == '\'' || c == ']';
    }

    std::string take_outside(char32_t c) {
        if (!continues_heading(c))
            return "a heading without a name: [[slot]], [style.button] ...";
        if (c == '[' || c == '{')
            ++depth_;
        else if (c == ']' || c == '}')
            --depth_;
        constexpr std::u32string_view ends_word = U" \t\r\n]},#", before_value = U"=[{\"'";
        if (ends_word.find(c) != std::u32string_view::npos)
            word_ = false;
        else if (before_value.find(c) == std::u32string_view::npos)
            word_ = true;
        if (c == '#')
            inside_ = comment;
        else if (c == '"' || c == '\'')
            open(c);
        else if (c == '.' && ++dots_ > most_dots)
            return "a key of more than " + std::to_string(most_dots) + " parts";
        else if (is_blank_beyond_ascii(c))
            return code_point_name(c) + " is no blank here: only space and tab are";
        else if (c >= 0x80)
            return code_point_name(c) + " outside a text: put it in quotation marks";
        return {};
    }

    void open(char32_t quote) {
        const std::size_t more = take_quotes(quote, 2);
        in_word_ = std::exchange(word_, true);
        long_ = more == 2;
        inside_ = more == 1 ? outside : quote; // two are an empty text
    }

    void take_in_line(char32_t c) {
        if (c == '\n')
            ended_ = true; // the TOML reader stops here, too, and reports it
        else if (escaped_)
            escaped_ = false;
        else if (inside_ == '"' && c == '\\')
            escaped_ = true;
        else if (c == inside_)
            inside_ = outside;
    }

    /// A backslash at the end of a line joins the next one without its leading blanks; that is where the TOML reader
    /// looks for blanks within a text.
    std::string take_long_text(char32_t c) {
        const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
        if ((escaped_ || joining_) && c >= 0x80)
            return code_point_name(c) +
                   " behind a backslash or a line that ends in one: write it as \\u and four digits";
        if (escaped_) {
            escaped_ = false;
            joining_ = blank;
            return {};
        }
        joining_ = joining_ && blank;
        if (c == '\\')
            escaped_ = true;
        else if (c == '"')
            close_long();
        return {};
    }

    /// Three quotation marks end a long text; up to two before them belong to it.
    void close_long() {
        if (take_quotes(inside_, 4) >= 2)
            inside_ = outside;
    }

    std::size_t take_quotes(char32_t quote, std::size_t most) {
        const std::size_t count = std::min({rest_.find_first_not_of(static_cast<char>(quote)), rest_.size(), most});
        rest_.remove_prefix(count);
        column_ += static_cast<int>(count);
        return count;
    }

    std::string_view rest_;
    static constexpr char32_t outside = 0, comment = '#';
    char32_t inside_ = outside; ///< or a comment, or a text with such quotation marks
    bool long_ = false;         ///< the text is between three of them
    bool word_ = false;    ///< the reader may be inside a number, which ends at a blank, a closing bracket or a comma
    bool in_word_ = false; ///< the text began there
    bool escaped_ = false, joining_ = false, ended_ = false;
    enum class Heading { none, bracket, name }; ///< what must come next in a heading
    Heading heading_ = Heading::none;
    bool at_line_start_ = true;
    int depth_ = 0; ///< open brackets
    int line_ = 1, column_ = 0, dots_ = 0;
};

} // namespace

std::optional<Fault> fault_of_source_text(std::string_view source) {
    return TextScan(source).run();
}

} // namespace vcc::kit
