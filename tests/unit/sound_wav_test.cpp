#include "folder_test.h"
#include "sound/effect_file.h"
#include "sound/wav_header.h"
#include "support/wav_file.h"

#include <vector>

namespace vcc {
namespace {

using test::WavFile;

const std::string audio = "abcdefgh";

class WavTest : public test::FolderTest {
protected:
    WavHeader parse(const std::string& bytes) const {
        folder.write("a.wav", bytes);
        return parse_wav_header("a.wav");
    }
    SamplePtr effect(const std::string& bytes) const {
        folder.write("a.wav", bytes);
        return load_effect_file("a.wav");
    }
};

TEST_F(WavTest, HeaderOfFilesThatPlay) {
    const struct {
        const char* what;
        std::string bytes;
        std::vector<long> read; // place and length of the audio, rate, bits, channels
    } cases[] = {
        {"plain", WavFile().fmt(16, 2, 44100).data(audio), {44, 8, 44100, 16, 2}},
        {"fact between", WavFile().fmt(8, 1).chunk("fact", "1234").data(audio), {56, 8, 22050, 8, 1}},
        {"18-byte format", WavFile().fmt(16, 1, 11025, 1, "\xFF\xFF").data(audio), {46, 8, 11025, 16, 1}},
        {"odd chunk", WavFile().chunk("LIST", {"abc\0", 4}, 3).fmt(8, 2).data(audio), {56, 8, 22050, 8, 2}},
        {"no format: the defaults", WavFile().data(audio), {20, 8, 22050, 8, 1}},
        {"data beyond the end", WavFile().fmt(16, 2).chunk("data", audio, 0xFFFFFFFF).bytes(), {44, 8, 22050, 16, 2}},
        {"a broken last frame", WavFile().fmt(16, 2).data("abcdefg"), {44, 4, 22050, 16, 2}},
        {"no audio", WavFile().fmt(8, 1).data(""), {44, 0, 22050, 8, 1}},
    };
    for (const auto& each : cases) {
        const WavHeader header = parse(each.bytes);
        const std::vector<long> read{header.data_offset, header.data_length, header.rate, header.bits, header.channels};
        EXPECT_EQ(read, each.read) << each.what;
    }
}

TEST_F(WavTest, FilesThatCannotPlay) {
    const std::pair<const char*, std::string> cases[] = {
        {"compressed", WavFile().fmt(16, 2, 44100, 85).data(audio)},
        {"three channels", WavFile().fmt(16, 3).data(audio)},
        {"no channel", WavFile().fmt(16, 0).data(audio)},
        {"24 bits", WavFile().fmt(24, 1).data(audio)},
        {"no rate", WavFile().fmt(16, 1, 0).data(audio)},
        {"absurd rate", WavFile().fmt(16, 1, 2000000000).data(audio)},
        {"chunk longer than the file", WavFile().fmt(8, 1).chunk("LIST", "abc", 0xFFFFFFFF).data(audio)},
        {"no data chunk", WavFile().fmt(8, 1).bytes()},
        {"not WAVE", WavFile().fmt(8, 1).data(audio).replace(8, 1, "A")},
    };
    for (const auto& [what, bytes] : cases)
        EXPECT_EQ(parse(bytes).data_offset, 0) << what;
    EXPECT_EQ(parse_wav_header("missing.wav").data_offset, 0);

    const std::string whole = WavFile().fmt(16, 2).chunk("fact", "1234").data(audio);
    for (std::size_t length = 0; length < 56; ++length) // up to the end of the data chunk's header
        EXPECT_EQ(parse(whole.substr(0, length)).data_offset, 0) << length;
}

TEST_F(WavTest, EffectsBecomeUnsignedSamples) {
    const SamplePtr wide = effect(WavFile().fmt(16, 2, 8000).data({"\x01\x80\x02\x00\x03\x7F\x04\xFF", 8}));
    ASSERT_TRUE(wide);
    EXPECT_EQ(std::pair(wide->len, wide->freq), std::pair(2UL, 8000));
    const auto* const words = static_cast<const unsigned short*>(wide->data);
    EXPECT_EQ(std::vector(words, words + 4), (std::vector<unsigned short>{0x0001, 0x8002, 0xFF03, 0x7F04}));

    const SamplePtr silent = effect(WavFile().fmt(8, 1).data(""));
    ASSERT_TRUE(silent);
    EXPECT_EQ(silent->len, 1u);
    EXPECT_EQ(*static_cast<const unsigned char*>(silent->data), 128);

    EXPECT_FALSE(effect(WavFile().fmt(8, 1).data(std::string(effect_size_limit + 1, 'x'))));
    EXPECT_FALSE(load_effect_file("missing.wav"));
}

} // namespace
} // namespace vcc
