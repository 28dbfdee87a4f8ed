// Operations on sources: each is refused, or leaves a source that reads as its own tree says.
// An input is operations of a few bytes each; behind a byte 0 its own source, else they work on a seed of "sources".
#include "core/files.h"
#include "vcckit/edit/document_kinds.h"
#include "vcckit/source/source_tree.h"
#include "world.h"

#include <array>
#include <string>
#include <vector>

namespace {

using namespace vcc::kit::edit;

constexpr std::array<const char*, 12> fields{"row",     "text",  "dest_x",    "action",       "hidden", "shadow",
                                             "padding", "style", "highlight", "repeat.count", "toggle", "index"};
constexpr std::array<std::optional<std::size_t>, 4> languages{std::nullopt, 0, 1, std::nullopt};
constexpr std::array<const char*, 4> looks{"", "highlight", "pressed", "x"}, texts{"a", "gold", "\xc3\xa4\"\\", "b, a"};

/// Bytes off the front of the input; zeros behind its end.
class Bytes {
public:
    explicit Bytes(std::string_view input) : rest_(input) {}
    bool empty() const { return rest_.empty(); }
    std::string_view rest() const { return rest_; }
    int next() {
        const int byte = rest_.empty() ? 0 : static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(rest_.empty() ? 0 : 1);
        return byte;
    }
    template <class Table>
    auto of(const Table& table) {
        return table[static_cast<std::size_t>(next()) % table.size()];
    }

private:
    std::string_view rest_;
};

Operation operation_of(Bytes& bytes, int what) {
    Operation operation{.what = static_cast<Operation::Do>((what - 1) % 9)};
    Address& address = operation.of.emplace_back();
    address.of = static_cast<Address::Of>(bytes.next() % 4);
    address.index = bytes.next() % 24;
    address.style = bytes.of(texts);
    address.look = bytes.of(looks);
    operation.field = bytes.of(fields);
    operation.language = bytes.of(languages);
    const int kind = bytes.next();
    if (kind % 3 == 0)
        operation.value = std::int64_t{kind} - 100;
    else if (kind % 3 == 1)
        operation.value = kind % 2 == 0;
    else
        operation.value = std::string(bytes.of(texts));
    operation.dx = bytes.next() - 128;
    operation.dy = bytes.next() - 128;
    operation.to = bytes.next();
    operation.text = bytes.of(std::array{"", "row = 1\n", "text = \"a\"", "x"});
    return operation;
}

} // namespace

void vcc::fuzz::one_input(std::string_view input) {
    Bytes bytes(input);
    std::vector<Operation> operations;
    while (!bytes.empty() && operations.size() < 8) {
        const int what = bytes.next();
        if (what == 0)
            break;
        operations.push_back(operation_of(bytes, what));
    }
    static const std::string common = *read_file(VELDOR_SOURCE_DIR "/tests/fuzz/corpus/sources/edited.toml");
    const std::string source = bytes.empty() ? common : std::string(bytes.rest());
    for (const DocumentKind kind : {DocumentKind::screen, DocumentKind::windows, DocumentKind::buffers}) {
        std::string text = source;
        for (const Operation& operation : operations)
            try {
                text = apply(text, kind, std::array{operation}, "vcc");
            } catch (const Refused& refused) {
                require(*refused.what() != '\0');
            }
        try {
            for (const auto& slot : row_of(kind).describe(text, "vcc").slots)
                require(slot["line"] >= 1);
        } catch (const Refused&) {
            require(text == source || kind != DocumentKind::screen);
        }
    }
}
