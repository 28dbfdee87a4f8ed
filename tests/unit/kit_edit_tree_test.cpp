// The tree of a source: it says what TOML's own reader says, at the same places.
#include "vcckit/edit/source_tree.h"
#include "vcckit/source/source_values.h"

#include "core/files.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vcc::kit::edit {
namespace {

std::size_t byte_of(std::string_view source, const toml::source_position& position) {
    std::size_t at = 0;
    for (auto line = position.line; line > 1; --line)
        at = source.find('\n', at) + 1;
    for (auto column = position.column; column > 1; --column) // columns are characters
        for (++at; at < source.size() && (static_cast<unsigned char>(source[at]) & 0xC0U) == 0x80U;)
            ++at;
    return at;
}

void expect_same(std::string_view source, const toml::node& theirs, const Node& ours, const std::string& where) {
    if (const toml::table* const table = theirs.as_table()) {
        ASSERT_TRUE(ours.is_table()) << where;
        EXPECT_EQ(table->size(), ours.members.size()) << where;
        for (const auto& [key, value] : *table) {
            const Node* const found = ours.find(key.str());
            ASSERT_TRUE(found) << where << "." << key.str();
            expect_same(source, value, *found, where + "." + std::string(key.str()));
        }
        if (table->is_inline()) {
            EXPECT_EQ(byte_of(source, theirs.source().begin), ours.span.begin) << where;
        }
    } else if (const toml::array* const list = theirs.as_array()) {
        ASSERT_EQ(ours.kind, Node::Kind::list) << where;
        ASSERT_EQ(list->size(), ours.items.size()) << where;
        for (std::size_t i = 0; i < list->size(); ++i)
            expect_same(source, *list->get(i), ours.items[i], where + "#" + std::to_string(i));
    } else {
        EXPECT_EQ(byte_of(source, theirs.source().begin), ours.span.begin) << where;
        const auto number = theirs.value_exact<std::int64_t>();
        const auto flag = theirs.value_exact<bool>();
        const auto text = theirs.value_exact<std::string>();
        const Node::Kind kind = number ? Node::Kind::number
                                : flag ? Node::Kind::flag
                                : text ? Node::Kind::text
                                       : Node::Kind::other;
        EXPECT_EQ(ours.kind, kind) << where;
        EXPECT_EQ(ours.number, number.value_or(ours.number)) << where;
        EXPECT_EQ(ours.flag, flag.value_or(false)) << where;
        EXPECT_EQ(ours.text, text.value_or("")) << where;
    }
}

void expect_same(const std::string& source) {
    const auto tree = read_source_tree(source);
    ASSERT_TRUE(tree) << tree.reason() << "\n" << source;
    const toml::parse_result parsed = toml::parse(source);
    expect_same(source, parsed.table(), **tree, "");
}

TEST(SourceTree, SaysWhatTheReaderOfTomlSays) {
    const std::string sources[] = {
        "",
        "a = 1",
        "\xEF\xBB\xBF# comment\r\na = 0x1F # behind\r\n\r\n[ b . \"c d\" ]\r\ne.f = [1, 2, # one\r\n 3,]\r\ne.g = "
        "-1_000\r\n",
        "[[slot]]\nindex = 1\ntext.en = \"a # b\"\ntext.de = 'c \"\\'\n[slot.highlight]\nrow=1\n[[slot]]\nindex = 2\n",
        "a = { b = { c = [ { d = \"}\" } ], e.f = true }, g = \"\"\"\n  x \\\n  y\"\"\"\"\" , h = '''\nz''' }",
        "[[a.b]]\nc=1\n[[a.b.d]]\ne=1\n[[a.b.d]]\ne=2\n[a]\nf=+5",
        "text = \"M\u00fchle \\u00fc \\t\\\\\" # \u00fc\nnext = [\"\u00df\", \"x\"]\n",
        "date = 2026-11-25 10:00:00\nnumber = 1.5\nname = inf\nlist = []\ntable = {}",
    };
    for (const std::string& source : sources)
        expect_same(source);
    for (const auto& file : std::filesystem::directory_iterator(VELDOR_SOURCE_DIR "/game/screens"))
        if (file.path().extension() == ".toml")
            expect_same(*read_file(file.path().string()));
}

TEST(SourceTree, MistakesAreNamedByTheirLine) {
    EXPECT_TRUE(read_source_tree("a = 1\nb = \n").reason().starts_with("line 2: "));
    EXPECT_TRUE(read_source_tree("a = 1\n\n[]\n").reason().starts_with("line 3: "));
}

} // namespace
} // namespace vcc::kit::edit
