// Operations on files of text windows and on the buffer list.
#include "vcckit/edit/source_edit.h"
#include "vcckit/edit/window_edit.h"

#include <gtest/gtest.h>

namespace vcc::kit::edit {
namespace {

using Do = Operation::Do;

Operation operation(Do what, int window, const std::string& field = {}, Value value = std::int64_t{0}) {
    Operation made;
    made.what = what;
    made.of = {{Address::Of::window, window, "", ""}};
    made.field = field;
    made.value = std::move(value);
    return made;
}

Operation of_buffer(Do what, int buffer, const std::string& picture = {}) {
    Operation made = operation(what, 0, "picture", picture);
    made.of = {{Address::Of::buffer, buffer, "", ""}};
    made.to = buffer;
    made.text = picture;
    return made;
}

Operation shifted(Do what, int window, int dx, int dy) {
    Operation made = operation(what, window);
    made.dx = dx;
    made.dy = dy;
    return made;
}

Operation numbered(Do what, int window, int to, const std::string& text = {}) {
    Operation made = operation(what, window);
    made.to = to;
    made.text = text;
    return made;
}

TEST(WindowEdit, ChangesTheLinesThatSayIt) {
    using namespace std::string_literals;
    const std::string both = "# all\n#\n# first\n+1\nw1\nxo10 left\nyo 20\nxu30\nyu40\n-1\n#\n# second\n+19\nf4\n-0\n";
    const auto replaced = [&](const std::string& from, const std::string& to) {
        std::string text = both;
        return text.replace(text.find(from), from.size(), to);
    };
    const struct {
        const char* what;
        Operation operation;
        std::string after; ///< or, behind a "!", the beginning of the reason
    } cases[] = {
        {"number", operation(Do::set, 1, "left", 11), replaced("xo10", "xo11")},
        {"blank before it", operation(Do::set, 1, "yo", -5), replaced("yo 20", "yo -5")},
        {"style", operation(Do::set, 1, "style", -1), replaced("-1", "--1")},
        {"new line", operation(Do::set, 1, "shadow", 8), replaced("-1\n", "-1\ns8\n")},
        {"new line at the end", operation(Do::set, 19, "font", "mono_14"s), both + "t4\n"},
        {"title", operation(Do::set, 1, "title", "Ziel"s), replaced("-1\n", "-1\nZiel\n")},
        {"title like a key", operation(Do::set, 1, "title", "goal"s), "!a title cannot begin with \"g\""},
        {"unset", operation(Do::unset, 19, "f"), replaced("f4\n", "")},
        {"style is needed", operation(Do::unset, 1, "-"), "!every window needs its style"},
        {"move", shifted(Do::move, 1, 5, 0), replaced("xo10 left\nyo 20\nxu30", "xo15 left\nyo 20\nxu35")},
        {"resize", shifted(Do::resize, 1, 0, -20), replaced("yu40", "yu20")},
        {"resize to nothing", shifted(Do::resize, 1, 0, -21), "!the window would end before it begins"},
        {"create", numbered(Do::create, 0, 3, "xo4"), both + "+3\nxo4\n-0\n"},
        {"create what is there", numbered(Do::create, 0, 19), "!there is a window 19 already"},
        {"copy", numbered(Do::copy, 19, 4), both + "+4\nf4\n-0\n"},
        {"remove", operation(Do::remove, 1), "# all\n" + both.substr(both.find("#\n# second"))},
        {"remove a fixed one", operation(Do::remove, 19), "!the program knows this window by its number"},
        {"renumber", numbered(Do::renumber, 1, 29), replaced("+1", "+29")},
        {"beyond the table", numbered(Do::renumber, 1, 30), "!windows are numbered 0 to 29"},
        {"none", operation(Do::set, 7, "left", 1), "!there is no window 7"},
    };
    for (const auto& each : cases) {
        const auto result = apply(both, DocumentKind::windows, {{each.operation}}, {});
        const std::string got = result ? *result : "!" + result.reason();
        EXPECT_EQ(each.after.starts_with('!') ? got.substr(0, each.after.size()) : got, each.after) << each.what;
    }
    EXPECT_EQ(*apply("+1\r\n-0", DocumentKind::windows, {{operation(Do::set, 1, "s", 1)}}, {}), "+1\r\n-0\r\ns1");
}

TEST(BufferEdit, ChangesTheLinesThatSayIt) {
    const std::string list = "# all\r\n#\r\n# screen\r\n+0\r\na.pcx\r\n# more\r\n+5\r\nb.pcx\r\nc.pcx";
    const struct {
        Operation operation;
        std::string before, after; ///< or, behind a "!", the beginning of the reason
    } cases[] = {
        {of_buffer(Do::create, 9, "d.pcx"), list, list + "\r\n+9\r\nd.pcx"},
        {of_buffer(Do::create, 5, "d.pcx"), list, "!buffer 5 holds b.pcx already"},
        {of_buffer(Do::create, 21, "d.pcx"), list, "!buffers for pictures are 0 to 20"},
        {of_buffer(Do::create, 9, "+d.pcx"), list, "!a picture's name cannot begin"},
        {of_buffer(Do::create, 9, "d.pcx\n+0"), list, "!a picture is named in one line"},
        {of_buffer(Do::create, 9, "d.pcx"), "+0\na\n+25\n", "!line 3 names no buffer"},
        {of_buffer(Do::set, 5, "d.pcx"), list, list.substr(0, list.size() - 5) + "d.pcx"},
        {of_buffer(Do::remove, 5), "+0\na\n# more\n+5\nb\n", "+0\na\n"},
        {of_buffer(Do::remove, 0), list, "!the program knows this buffer"},
        {of_buffer(Do::remove, 6), list, "!the list has no buffer 6"},
        {of_buffer(Do::move, 5), list, "!buffers are made"},
        {operation(Do::remove, 5), list, "!the list has no window 5"},
    };
    for (const auto& each : cases) {
        const auto result = apply(each.before, DocumentKind::buffers, {{each.operation}}, {});
        const std::string got = result ? *result : "!" + result.reason();
        EXPECT_EQ(each.after.starts_with('!') ? got.substr(0, each.after.size()) : got, each.after);
    }
}

} // namespace
} // namespace vcc::kit::edit
