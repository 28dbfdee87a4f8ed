#include "sound/effect_file.h"
#include "sound/wav_header.h"
#include "support/allegro_none.h"
#include "support/wav_file.h"

#include <gtest/gtest.h>

#include <vector>

namespace vcc {

using test::ScratchFolder;
using test::WavFile;

namespace {

const std::string audio = "abcdefgh";

class WavTest : public testing::Test {
protected:
    WavTest() { test::start_library(); }
    WavHeader parse(const std::string& bytes) {
        folder.write("a.wav", bytes);
        return parse_wav_header("a.wav");
    }
    ScratchFolder folder;
};

struct Accepted {
    const char* what;
    std::string bytes;
    long offset, length;
    int rate, bits, channels;
};

TEST_F(WavTest, HeaderOfFilesThatPlay) {
    const std::vector<Accepted> table = {
        {"plain", WavFile().fmt(16, 2, 44100).data(audio), 44, 8, 44100, 16, 2},
        {"fact between", WavFile().fmt(8, 1).chunk("fact", "1234").data(audio), 56, 8, 22050, 8, 1},
        {"18-byte format", WavFile().fmt(16, 1, 11025, 1, "\xFF\xFF").data(audio), 46, 8, 11025, 16, 1},
        {"unknown chunk, odd: one pad byte", WavFile().chunk("LIST", std::string("abc\0", 4), 3).fmt(8, 2).data(audio),
         56, 8, 22050, 8, 2},
        {"no format: the defaults", WavFile().data(audio), 20, 8, 22050, 8, 1},
        {"data beyond the end is cut", WavFile().fmt(16, 2).chunk("data", audio, 0xFFFFFFFFu).bytes(), 44, 8, 22050, 16,
         2},
        {"a broken last frame is dropped", WavFile().fmt(16, 2).data("abcdefg"), 44, 4, 22050, 16, 2},
        {"no audio", WavFile().fmt(8, 1).data(""), 44, 0, 22050, 8, 1},
    };
    for (const Accepted& row : table) {
        const WavHeader header = parse(row.bytes);
        EXPECT_EQ(header.data_offset, row.offset) << row.what;
        EXPECT_EQ(header.data_length, row.length) << row.what;
        EXPECT_EQ(header.rate, row.rate) << row.what;
        EXPECT_EQ(header.bits, row.bits) << row.what;
        EXPECT_EQ(header.channels, row.channels) << row.what;
    }
}

TEST_F(WavTest, FilesThatCannotPlay) {
    std::string other_form = WavFile().fmt(8, 1).data(audio);
    other_form[8] = 'A';
    const std::vector<std::pair<const char*, std::string>> table = {
        {"compressed", WavFile().fmt(16, 2, 44100, 85).data(audio)},
        {"three channels", WavFile().fmt(16, 3).data(audio)},
        {"no channel", WavFile().fmt(16, 0).data(audio)},
        {"24 bits", WavFile().fmt(24, 1).data(audio)},
        {"no rate", WavFile().fmt(16, 1, 0).data(audio)},
        {"absurd rate", WavFile().fmt(16, 1, 2000000000).data(audio)},
        {"chunk longer than the file", WavFile().fmt(8, 1).chunk("LIST", "abc", 0xFFFFFFFFu).data(audio)},
        {"no data chunk", WavFile().fmt(8, 1).bytes()},
        {"not WAVE", other_form},
        {"empty", ""},
    };
    for (const auto& [what, bytes] : table)
        EXPECT_EQ(parse(bytes).data_offset, 0) << what;
    EXPECT_EQ(parse_wav_header("missing.wav").data_offset, 0);

    const std::string whole = WavFile().fmt(16, 2).chunk("fact", "1234").data(audio);
    for (std::size_t length = 0; length < 56; ++length) // up to the end of the data chunk's header
        EXPECT_EQ(parse(whole.substr(0, length)).data_offset, 0) << length;
}

TEST_F(WavTest, EffectsBecomeUnsignedSamples) {
    folder.write("w.wav", WavFile().fmt(16, 2, 8000).data(std::string("\x01\x80\x02\x00\x03\x7F\x04\xFF", 8)));
    const SamplePtr wide = load_effect_file("w.wav");
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->len, 2u);
    EXPECT_EQ(wide->freq, 8000);
    const auto* const words = static_cast<const unsigned short*>(wide->data);
    EXPECT_EQ(std::vector(words, words + 4), (std::vector<unsigned short>{0x0001, 0x8002, 0xFF03, 0x7F04}));

    folder.write("n.wav", WavFile().fmt(8, 1).data(""));
    const SamplePtr silent = load_effect_file("n.wav");
    ASSERT_TRUE(silent);
    EXPECT_EQ(silent->len, 1u);
    EXPECT_EQ(*static_cast<const unsigned char*>(silent->data), 128);

    folder.write("big.wav", WavFile().fmt(8, 1).data(std::string(effect_size_limit + 1, 'x')));
    EXPECT_FALSE(load_effect_file("big.wav"));
    EXPECT_FALSE(load_effect_file("missing.wav"));
}

} // namespace
} // namespace vcc
