#include "folder_test.h"
#include "sound/wav_file.h"
#include "support/wav_file.h"

#include <vector>

namespace vcc {
namespace {

using test::WavFile;
using WavTest = test::FolderTest;

TEST_F(WavTest, HeadersTellWhereTheAudioIsOrAreRefused) {
    const std::string audio = "abcdefgh";
    using Told = std::vector<long>; // place and length of the audio, rate, bits, channels
    const Told refused{0, 0, 22050, 8, 1};
    const std::tuple<const char*, std::string, Told> cases[] = {
        {"18-byte format", WavFile().fmt(16, 1, 11025, 1, "\xFF\xFF").data(audio), {46, 8, 11025, 16, 1}},
        {"odd chunk", WavFile().chunk("LIST", {"abc\0", 4}, 3).fmt(8, 2).data(audio), {56, 8, 22050, 8, 2}},
        {"data beyond the end", WavFile().fmt(16, 2).chunk("data", audio, 0xFFFFFFFF).bytes(), {44, 8, 22050, 16, 2}},
        {"a broken last frame", WavFile().fmt(16, 2).data("abcdefg"), {44, 4, 22050, 16, 2}},
        {"compressed", WavFile().fmt(16, 2, 44100, 85).data(audio), refused},
        {"no channel", WavFile().fmt(16, 0).data(audio), refused},
        {"24 bits", WavFile().fmt(24, 1).data(audio), refused},
        {"no rate", WavFile().fmt(16, 1, 0).data(audio), refused},
        {"absurd rate", WavFile().fmt(16, 1, 2000000000).data(audio), refused},
        {"chunk longer than the file", WavFile().chunk("LIST", "abc", 0xFFFFFFFF).data(audio), refused},
        {"no data", WavFile().fmt(8, 1).bytes(), refused},
    };
    for (const auto& [what, bytes, told] : cases) {
        folder.write("a.wav", bytes);
        const WavHeader read = parse_wav_header("a.wav");
        EXPECT_EQ((Told{read.data_offset, read.data_length, read.rate, read.bits, read.channels}), told) << what;
    }
}

TEST_F(WavTest, EffectsBecomeUnsignedSamples) {
    folder.write("a.wav", WavFile().fmt(16, 2, 8000).data({"\x01\x80\x02\x00\x03\x7F\x04\xFF", 8}));
    const SamplePtr wide = load_effect_file("a.wav").value_or(nullptr);
    ASSERT_TRUE(wide);
    EXPECT_EQ(std::pair(wide->len, wide->freq), std::pair(2UL, 8000));
    const auto* const words = static_cast<const unsigned short*>(wide->data);
    EXPECT_EQ(std::vector(words, words + 4), (std::vector<unsigned short>{0x0001, 0x8002, 0xFF03, 0x7F04}));
    folder.write("two_minutes.wav", WavFile().fmt(16, 2, 44100).data(std::string(120u * 4 * 44100, 'x')));
    const SamplePtr large = load_effect_file("two_minutes.wav").value_or(nullptr);
    EXPECT_TRUE(large && large->len == 120u * 44100);
}

TEST(FadeIn, RaisesEverySampleOfTheFirstFrames) {
    std::vector<std::int16_t> words{1000, -1000, 1000, -1000, 1000, -1000, 1000};
    fade_in({reinterpret_cast<unsigned char*>(words.data()), 2 * words.size()}, 16, 4, 2);
    EXPECT_EQ(words, (std::vector<std::int16_t>{0, 0, 500, -500, 1000, -1000, 1000}));
}

} // namespace
} // namespace vcc
