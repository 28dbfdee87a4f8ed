// The tree of a source: every part of it is where the tree says.
#include "vcckit/source/source_tree.h"

#include "core/files.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vcc::kit {
namespace {

std::string_view at(std::string_view source, const Span& span) {
    return source.substr(span.begin, span.end - span.begin);
}

void expect_same_value(const Node& a, const Node& b, const std::string& where) {
    EXPECT_EQ(a.kind, b.kind) << where;
    EXPECT_EQ(a.number, b.number) << where;
    EXPECT_EQ(a.flag, b.flag) << where;
    EXPECT_EQ(a.text, b.text) << where;
    EXPECT_EQ(a.items.size(), b.items.size()) << where;
    EXPECT_EQ(a.members.size(), b.members.size()) << where;
}

/// Reads each value again by itself, from the bytes that the tree gives for it.
void expect_in_place(const std::string& source, const Node& node, const std::string& where) {
    if (node.span.end > node.span.begin) {
        const SourceTree alone = read_source_tree("x = " + std::string(at(source, node.span)) + "\n");
        ASSERT_TRUE(alone) << where << ": " << alone.reason();
        expect_same_value(node, *alone.root->find("x"), where);
    }
    if (node.heading.end > 0) {
        EXPECT_NE(at(source, node.heading).find('['), std::string_view::npos) << where;
    }
    for (const Member& member : node.members) {
        const std::string name = where + "." + member.key;
        if (member.whole.end > 0) {
            const SourceTree alone = read_source_tree(at(source, member.whole));
            ASSERT_TRUE(alone) << name << ": " << alone.reason();
            EXPECT_EQ(member.key_span.begin, member.whole.begin) << name;
            EXPECT_TRUE(at(source, member.key_span).starts_with(node.prefix)) << name;
            EXPECT_EQ(member.value.span.end, member.whole.end) << name;
        }
        if (member.line.end > 0) {
            EXPECT_TRUE(member.line.end == source.size() || source[member.line.end - 1] == '\n') << name;
            EXPECT_TRUE(read_source_tree(at(source, member.line))) << name;
        }
        expect_in_place(source, member.value, name);
    }
    for (const Node& item : node.items)
        expect_in_place(source, item, where + "#");
}

TEST(SourceTree, EveryPartIsWhereTheTreeSays) {
    std::vector<std::string> sources = {
        "",
        "a = 1",
        "\xEF\xBB\xBF# comment\r\na = 0x1F # behind\r\n\r\n[ b . \"c d\" ]\r\ne.f = [1, 2, # one\r\n 3,]\r\ne.g = "
        "-1_000\r\n",
        "[[slot]]\nindex = 1\ntext.en = \"a # b\"\ntext.de = 'c \"\\'\n[slot.highlight]\nrow=1\n[[slot]]\nindex = 2\n",
        "a = { b = { c = [ { d = \"}\" } ], e.f = true }, g = \"\"\"\n  x \\\n  y\"\"\"\"\" , h = '''\nz''' }",
        "[[a.b]]\nc=1\n[[a.b.d]]\ne=1\n[[a.b.d]]\ne=2\n[a]\nf=+5",
        "text = \"M\u00fchle \\u00fc \\t\\\\\" # \u00fc\nnext = [\"\u00df\", \"x\"]\n",
        "date = 2026-11-25 10:00:00\nnumber = 1.5\nname = inf\nlist = []\ntable = {}",
        "x = { a.b = 1, c = 2, a.\"e,f\" = 3, 'g\"' . h = 4 }\n\"q\\\"\" . r.s = 1\n\"q\\\"\" . t = 2",
    };
    for (const auto& file : std::filesystem::directory_iterator(VELDOR_SOURCE_DIR "/game/screens"))
        if (file.path().extension() == ".toml")
            sources.push_back(*read_file(file.path().string()));
    for (const std::string& source : sources) {
        const SourceTree tree = read_source_tree(source);
        ASSERT_TRUE(tree) << tree.reason() << "\n" << source;
        expect_in_place(source, *tree.root, "");
    }
}

} // namespace
} // namespace vcc::kit
