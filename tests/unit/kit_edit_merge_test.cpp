// Changes of both sides brought together.
#include "vcckit/edit/merge.h"

#include <gtest/gtest.h>

namespace vcc::kit::edit {
namespace {

/// A text of one-letter lines.
std::string lines(std::string_view letters) {
    std::string text;
    for (const char letter : letters)
        text += std::string(1, letter) + "\n";
    return text;
}

TEST(Merge, KeepsBothSidesAndTellsWhereTheyDisagree) {
    const struct {
        const char *base, *mine, *theirs, *merged, *conflicts; ///< base/mine/theirs of each conflict
    } cases[] = {
        {"abc", "abc", "abc", "abc", ""},
        {"abc", "xbc", "aby", "xby", ""},
        {"abc", "abc", "ac", "ac", ""},
        {"abcd", "abXcd", "abcdY", "abXcdY", ""},
        {"abc", "axc", "axc", "axc", ""},
        {"abc", "axc", "ayc", "axc", "b/x/y"},
        {"abcd", "axcd", "abyd", "axyd", ""}, // neighbours, one for one
        {"abcd", "axyd", "abzd", "axyd", "c/y/z"},
        {"abcd", "ad", "axcd", "ad", "bc//xc"},
        {"", "a", "b", "a", "/a/b"},
        {"abc", "", "abc", "", ""},
        {"abc", "", "xbc", "", "abc//xbc"},
        {"abcde", "xbcdy", "zbcde", "xbcdy", "a/x/z"},
        {"a", "ab", "ac", "ab", "/b/c"},
    };
    for (const auto& each : cases) {
        const Merged merged = merge(lines(each.base), lines(each.mine), lines(each.theirs));
        EXPECT_EQ(merged.text, lines(each.merged)) << each.base << " " << each.mine << " " << each.theirs;
        std::string told;
        for (const MergeConflict& conflict : merged.conflicts)
            told += conflict.base + "/" +
                    merged.text.substr(conflict.mine.begin, conflict.mine.end - conflict.mine.begin) + "/" +
                    conflict.theirs;
        std::erase(told, '\n');
        EXPECT_EQ(told, each.conflicts) << each.base << " " << each.mine << " " << each.theirs;
    }
}

} // namespace
} // namespace vcc::kit::edit
