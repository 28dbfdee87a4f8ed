#include "vcckit/edit/merge.h"

#include "vcckit/text/lines.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

using Lines = std::vector<std::string_view>;

constexpr int none = -1;
constexpr std::size_t most_compared = 25'000'000; ///< pairs of lines; with more, all between the equal ends has changed

/// For every line of `a` the line of `b` that it is equal to, ascending: as many as possible.
std::vector<int> matching(const Lines& a, const Lines& b) {
    std::vector<int> match(a.size(), none);
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t head = 0, tail = 0;
    for (; head < shorter && a[head] == b[head]; ++head)
        match[head] = static_cast<int>(head);
    for (; tail < shorter - head && a[a.size() - 1 - tail] == b[b.size() - 1 - tail]; ++tail)
        match[a.size() - 1 - tail] = static_cast<int>(b.size() - 1 - tail);
    const std::size_t rows = a.size() - head - tail, columns = b.size() - head - tail, pitch = columns + 1;
    if (rows * columns > most_compared)
        return match;
    // How many lines match from a pair of lines on.
    std::vector<int> common((rows + 1) * pitch, 0);
    for (std::size_t i = rows; i-- > 0;)
        for (std::size_t j = columns; j-- > 0;)
            common[i * pitch + j] = a[head + i] == b[head + j]
                                        ? common[(i + 1) * pitch + j + 1] + 1
                                        : std::max(common[(i + 1) * pitch + j], common[i * pitch + j + 1]);
    for (std::size_t i = 0, j = 0; i < rows && j < columns;)
        if (a[head + i] == b[head + j])
            match[head + i++] = static_cast<int>(head + j++);
        else
            common[(i + 1) * pitch + j] >= common[i * pitch + j + 1] ? ++i : ++j;
    return match;
}

std::string text_between(const Lines& lines, int begin, int end) {
    std::string text;
    for (int i = begin; i < end; ++i)
        text += lines[static_cast<std::size_t>(i)];
    return text;
}

/// The same lines in all three texts, from which the next stretch goes on.
struct Front {
    int base = 0, mine = 0, theirs = 0;
};

class Merger {
public:
    Merger(std::string_view base, std::string_view mine, std::string_view theirs)
        : base_(lines_with_ends(base)), mine_(lines_with_ends(mine)), theirs_(lines_with_ends(theirs)) {}

    Merged run() {
        const std::vector<int> in_mine = matching(base_, mine_), in_theirs = matching(base_, theirs_);
        Front front;
        for (int i = 0; i < static_cast<int>(base_.size()); ++i) {
            const int m = in_mine[static_cast<std::size_t>(i)], t = in_theirs[static_cast<std::size_t>(i)];
            if (m == none || t == none)
                continue;
            stretch(front, {i, m, t});
            out_.text += base_[static_cast<std::size_t>(i)];
            front = {i + 1, m + 1, t + 1};
        }
        stretch(front,
                {static_cast<int>(base_.size()), static_cast<int>(mine_.size()), static_cast<int>(theirs_.size())});
        return std::move(out_);
    }

private:
    /// Lines between two that all have in common.
    void stretch(const Front& from, const Front& to) {
        const int count = to.base - from.base;
        if (count > 1 && to.mine - from.mine == count && to.theirs - from.theirs == count) {
            for (int i = 0; i < count; ++i)
                piece({from.base + i, from.mine + i, from.theirs + i},
                      {from.base + i + 1, from.mine + i + 1, from.theirs + i + 1});
            return;
        }
        piece(from, to);
    }

    void piece(const Front& from, const Front& to) {
        std::string base = text_between(base_, from.base, to.base), mine = text_between(mine_, from.mine, to.mine),
                    theirs = text_between(theirs_, from.theirs, to.theirs);
        if (mine == base)
            out_.text += theirs;
        else if (theirs == base || theirs == mine)
            out_.text += mine;
        else
            conflict(std::move(base), mine, std::move(theirs));
    }

    void conflict(std::string base, const std::string& mine, std::string theirs) {
        const std::size_t begin = out_.text.size();
        out_.text += mine;
        if (!out_.conflicts.empty() && out_.conflicts.back().mine.end == begin) { // goes on with the next line
            MergeConflict& last = out_.conflicts.back();
            last.mine.end = out_.text.size();
            last.base += base;
            last.theirs += theirs;
        } else {
            out_.conflicts.push_back({{begin, out_.text.size()}, std::move(base), std::move(theirs), false});
        }
    }

    Lines base_, mine_, theirs_;
    Merged out_;
};

} // namespace

Merged merge(std::string_view base, std::string_view mine, std::string_view theirs) {
    if (mine == base || mine == theirs)
        return {std::string(theirs), {}};
    if (theirs == base)
        return {std::string(mine), {}};
    return Merger(base, mine, theirs).run();
}

} // namespace vcc::kit::edit
