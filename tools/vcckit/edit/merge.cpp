#include "edit/merge.h"

#include <algorithm>

namespace vcc::kit::edit {

namespace {

using Lines = std::vector<std::string_view>;

/// With their ends; the last one may have none.
Lines lines_of(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

constexpr int none = -1;
constexpr int most_differences = 2000; ///< with more, all between the equal beginnings and ends counts as changed

/// For every line of `a` the line of `b` that it is equal to, ascending, by the shortest edit script (Myers 1986).
class Matching {
public:
    Matching(const Lines& a, const Lines& b) : a_(a), b_(b), match_(a.size(), none) {
        const std::size_t shorter = std::min(a.size(), b.size());
        std::size_t head = 0, tail = 0;
        while (head < shorter && a[head] == b[head])
            ++head;
        while (tail < shorter - head && a[a.size() - 1 - tail] == b[b.size() - 1 - tail])
            ++tail;
        for (std::size_t i = 0; i < head; ++i)
            match_[i] = static_cast<int>(i);
        for (std::size_t i = 0; i < tail; ++i)
            match_[a.size() - 1 - i] = static_cast<int>(b.size() - 1 - i);
        first_ = static_cast<int>(head);
        rows_ = static_cast<int>(a.size() - head - tail);
        columns_ = static_cast<int>(b.size() - head - tail);
        if (rows_ > 0 && columns_ > 0)
            search();
    }

    std::vector<int> take() { return std::move(match_); }

private:
    bool same(int row, int column) const {
        return a_[static_cast<std::size_t>(first_ + row)] == b_[static_cast<std::size_t>(first_ + column)];
    }

    /// How far the paths with so many differences reach, by diagonal: rows, at index diagonal + differences.
    using Reach = std::vector<int>;

    /// The start of the last run of equal lines on a diagonal: one step from a path with one difference less.
    static int row_from(const Reach& before, int differences, int diagonal) {
        const auto at = [&](int d) { return before[static_cast<std::size_t>(d + differences - 1)]; };
        if (diagonal == -differences)
            return at(diagonal + 1);
        if (diagonal == differences || at(diagonal - 1) >= at(diagonal + 1))
            return at(diagonal - 1) + 1;
        return at(diagonal + 1);
    }

    void search() {
        std::vector<Reach> reaches;
        const int limit = std::min(rows_ + columns_, most_differences);
        for (int differences = 0; differences <= limit; ++differences) {
            Reach reach(static_cast<std::size_t>(2 * differences + 1), 0);
            for (int diagonal = -differences; diagonal <= differences; diagonal += 2) {
                int row = differences == 0 ? 0 : row_from(reaches.back(), differences, diagonal);
                while (row < rows_ && row - diagonal < columns_ && row - diagonal >= 0 && same(row, row - diagonal))
                    ++row;
                reach[static_cast<std::size_t>(diagonal + differences)] = row;
                if (row >= rows_ && row - diagonal >= columns_) {
                    trace(reaches, differences, diagonal);
                    return;
                }
            }
            // Diagonals between those that were visited are never asked for.
            reaches.push_back(std::move(reach));
        }
    }

    /// Goes back along the path that reached the end.
    void trace(const std::vector<Reach>& reaches, int differences, int diagonal) {
        int row = rows_;
        for (; differences >= 0; --differences) {
            const int start = differences == 0
                                  ? 0
                                  : row_from(reaches[static_cast<std::size_t>(differences - 1)], differences, diagonal);
            while (row > start) {
                --row;
                match_[static_cast<std::size_t>(first_ + row)] = first_ + row - diagonal;
            }
            if (differences == 0)
                return;
            const Reach& before = reaches[static_cast<std::size_t>(differences - 1)];
            const auto at = [&](int d) { return before[static_cast<std::size_t>(d + differences - 1)]; };
            const bool down =
                diagonal != -differences && (diagonal == differences || at(diagonal - 1) >= at(diagonal + 1));
            row = down ? start - 1 : start;
            diagonal += down ? -1 : 1;
        }
    }

    const Lines &a_, &b_;
    std::vector<int> match_;
    int first_ = 0, rows_ = 0, columns_ = 0;
};

std::string joined(const Lines& lines, int begin, int end) {
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
        : base_(lines_of(base)), mine_(lines_of(mine)), theirs_(lines_of(theirs)) {}

    Merged run() {
        const std::vector<int> in_mine = Matching(base_, mine_).take(), in_theirs = Matching(base_, theirs_).take();
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
        std::string base = joined(base_, from.base, to.base), mine = joined(mine_, from.mine, to.mine),
                    theirs = joined(theirs_, from.theirs, to.theirs);
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
            out_.conflicts.push_back({{begin, out_.text.size()}, std::move(base), std::move(theirs)});
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
