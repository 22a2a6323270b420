// Font files: nothing is lost by storing, and nothing damaged is taken for a font.
#include "engine/font/FontFile.h"

#include "engine/font/Bytes.h"
#include "engine/font/FontParts.h"
#include "engine/font/SampleOrigin.h"
#include "support/Testing.h"

namespace dravik {

using namespace engine;
namespace {

using testing::HasSubstr;

FontRecord smallFont() {
    FontRecord font;
    font.characterSet = {"A", "\xC3\x84", "'"};
    font.nextSerial = 90;
    for (int i = 0; i < 3; ++i) {
        Sample sample;
        sample.serial = static_cast<std::uint64_t>(10 + 20 * i);
        sample.code = 'A' + i;
        for (std::size_t k = 0; k < kInputCount; ++k)
            sample.inputs[k] = static_cast<float>(k) / 60.0f + 0.01f * static_cast<float>(i);
        font.samples.push_back(sample);
        font.distances.push_back(0.1 * i);
    }
    font.training.characters = {{'A', 2, font.samples[0].inputs}, {'B', 1, font.samples[1].inputs}};
    Network& net = font.training.network;
    net.codes = {'A', 'B'};
    net.hidden = 3;
    net.means.assign(kInputCount, 0.5f);
    net.scales.assign(kInputCount, 2);
    net.first.assign(kInputCount * 3, 0.25f);
    net.firstBias.assign(3, -1);
    net.second.assign(6, 0.125f);
    net.secondBias = {1, 2};
    return font;
}

// The first and the last sample are of one image, the middle one is of none that is known.
FontRecord seenFont() {
    FontRecord font = smallFont();
    GreyImage image(60, 40, 200);
    for (int y = 10; y < 30; ++y) image(25, y) = image(26, y) = 20;
    const auto name = std::make_shared<const SourceImage>(SourceImage{"parts/\xC3\x84 1.png", 77});
    for (const std::size_t i : {0, 2}) {
        const Region box{24, 10, 28, 30 + static_cast<int>(i)};
        font.samples[i].origin =
            std::make_shared<const SampleOrigin>(SampleOrigin{smallPicture(image, box), name, box});
    }
    return font;
}

// What is said of bytes that are refused; "" of good ones.
std::string refusal(std::span<const std::uint8_t> bytes) {
    const Failure failure = test::failureOfAction([&] { decodeFont(bytes, "fonts/x.nnd"); });
    if (failure.number() == 0) return "";
    EXPECT_THAT(failure.description(), HasSubstr("fonts/x.nnd"));
    return failure.description();
}

void seal(std::vector<std::uint8_t>& bytes) {
    const std::uint32_t value = checksum(std::span(bytes).first(bytes.size() - 4));
    for (std::size_t i = 0; i < 4; ++i)
        bytes[bytes.size() - 4 + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

TEST(FontFile, StoresEverything) {
    const FontRecord font = seenFont();
    const std::vector<std::uint8_t> bytes = encodeFont(font);
    const FontRecord back = decodeFont(bytes, "x");
    EXPECT_EQ(back.characterSet, font.characterSet);
    EXPECT_EQ(back.nextSerial, font.nextSerial);
    EXPECT_EQ(back.distances, font.distances);
    EXPECT_EQ(back.training.characters, font.training.characters);
    EXPECT_EQ(back.training.network, font.training.network);
    ASSERT_EQ(back.samples.size(), font.samples.size());
    for (std::size_t i = 0; i < font.samples.size(); ++i) {
        const Sample &one = back.samples[i], &stored = font.samples[i];
        EXPECT_EQ(one.serial, stored.serial);
        EXPECT_EQ(one.code, stored.code);
        EXPECT_EQ(one.inputs, stored.inputs);
        ASSERT_EQ(!one.origin, !stored.origin);
        if (!one.origin) continue;
        EXPECT_EQ(one.origin->picture, stored.origin->picture);
        EXPECT_EQ(one.origin->image->name, stored.origin->image->name);
        EXPECT_EQ(one.origin->image->digest, stored.origin->image->digest);
        EXPECT_EQ(one.origin->box, stored.origin->box);
    }
    EXPECT_EQ(back.samples[0].origin->image, back.samples[2].origin->image) << "a name is kept once";
    EXPECT_TRUE(decodeFont(encodeFont({}), "x").training.empty());
    // Programs of before read what they could have written.
    EXPECT_EQ(bytes[8], 2);
    EXPECT_EQ(encodeFont(smallFont())[8], 1);
}

TEST(FontFile, EveryFlippedByteAndEveryTruncationIsRefused) {
    const std::vector<std::uint8_t> good = encodeFont(seenFont());
    std::vector<std::uint8_t> bad = good;
    for (std::size_t i = 0; i < good.size(); ++i) {
        for (const int flip : {0x01, 0x80, 0xFF}) {
            bad[i] = static_cast<std::uint8_t>(good[i] ^ flip);
            EXPECT_NE(refusal(bad), "") << "byte " << i << " with " << flip;
        }
        bad[i] = good[i];
    }
    for (std::size_t size = 0; size < good.size(); ++size)
        EXPECT_NE(refusal(std::span(good).first(size)), "") << size;
    bad.push_back(0);
    EXPECT_NE(refusal(bad), "");
}

TEST(FontFile, RefusalsSayWhatIsWrong) {
    const std::vector<std::uint8_t> good = encodeFont(smallFont());
    EXPECT_THAT(refusal({}), HasSubstr("empty"));
    EXPECT_THAT(refusal(std::vector<std::uint8_t>(500, 'x')), HasSubstr("no font file"));
    EXPECT_THAT(refusal(std::span(good).first(100)), HasSubstr("ends early"));
    std::vector<std::uint8_t> later = good;
    later[8] = 3;
    seal(later);
    EXPECT_THAT(refusal(later), HasSubstr("version 3"));
    // A part that would be lost by saving the font again, and one that stands twice.
    const auto refusalWith = [](std::vector<std::uint8_t> bytes, std::string_view part) {
        bytes[8] = 2;
        bytes.insert(bytes.end() - 4, part.begin(), part.end());
        for (std::size_t i = 0; i < 4; ++i) bytes[16 + i] = static_cast<std::uint8_t>(bytes.size() >> 8 * i);
        seal(bytes);
        return refusal(bytes);
    };
    EXPECT_THAT(refusalWith(good, {"ROIS\0\0\0\0", 8}),
                HasSubstr("a part \"ROIS\" that this program does not know"));
    const std::vector<std::uint8_t> seen = encodeFont(seenFont());
    const std::string text(seen.begin(), seen.end() - 4);
    EXPECT_THAT(refusalWith(seen, text.substr(text.rfind("SEEN"))), HasSubstr("out of order"));
    FontRecord large;
    large.samples.resize(100'000);
    large.distances.resize(100'000);
    EXPECT_THAT(refusal(encodeFont(large)), HasSubstr("100000 samples, and a font at most 99999"));
}

// Whoever forges a checksum must still not make the loader read past the end or take memory beyond the file's
// size.
TEST(FontFile, ContentIsCheckedBehindAGoodChecksum) {
    const std::vector<std::uint8_t> good = encodeFont(seenFont());
    std::size_t refused = 0;
    for (std::size_t i = 12; i + 8 <= good.size(); ++i) {
        std::vector<std::uint8_t> bad = good;
        for (std::size_t k = 0; k < 4; ++k) bad[i + k] = 0xFF;
        seal(bad);
        refused += refusal(bad).empty() ? 0u : 1u;
    }
    // Numbers become undefined and counts huge; only labels, serial numbers and the like may pass.
    EXPECT_GT(refused, good.size() * 8 / 10);

    const auto origin = [](auto spoil) {
        return [spoil](FontRecord& font) {
            SampleOrigin spoilt = *font.samples[2].origin;
            spoil(spoilt);
            font.samples[2].origin = std::make_shared<const SampleOrigin>(std::move(spoilt));
        };
    };
    const std::function<void(FontRecord&)> spoilings[] = {
        [](FontRecord& font) { std::swap(font.samples[0].serial, font.samples[2].serial); },
        [](FontRecord& font) { font.samples[1].inputs[7] = 1.5f; },
        [](FontRecord& font) { font.samples[1].inputs[kHeightInput] = 1e30f; },
        [](FontRecord& font) { font.distances[1] = -0.5; },
        [](FontRecord& font) { font.training.network.hidden = 0; },
        origin([](SampleOrigin& one) { one.picture.width = 33; }),
        origin([](SampleOrigin& one) { one.picture.packed.resize(5000); }),
        origin([](SampleOrigin& one) {
            one.image = std::make_shared<const SourceImage>(SourceImage{std::string(5000, 'x')});
        })};
    for (const auto& spoil : spoilings) {
        FontRecord font = seenFont();
        spoil(font);
        EXPECT_NE(refusal(encodeFont(font)), "") << &spoil - spoilings;
    }
}

// What could not be read again is not written, and what cannot be written is not read.
TEST(FontFile, WhatTheReaderRefusesIsNotWritten) {
    const TemporaryFolder folder;
    const std::string file = folder.path("a.nnd");
    exportFont(smallFont(), file);
    std::vector<FontRecord> bad;
    for (const std::string& character :
         {std::string(), std::string(17, 'x'), std::string("\x1b[2J"), std::string(1, '\0'),
          std::string("\xC3"), std::string("\xED\xA0\x80"), std::string("\xC2\x85"), std::string("A")})
        bad.push_back(smallFont()), bad.back().characterSet.push_back(character);
    bad.push_back(smallFont()), bad.back().nextSerial = ~std::uint64_t{0};
    bad.push_back(smallFont()), bad.back().samples.back().serial = 1ull << 63;
    bad.push_back(smallFont()), bad.back().distances[0] = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < bad.size(); ++i) {
        EXPECT_NE(refusal(encodeFont(bad[i])), "") << i;
        EXPECT_EQ(test::refusal([&] { exportFont(bad[i], file); }), 57) << i;
        EXPECT_EQ(readFont(file).characterSet, smallFont().characterSet) << i;
    }
    for (const tool::CharacterSet& set : {tool::CharacterSet{"A", "A"}, {"\n"}, {""}})
        EXPECT_EQ(test::refusal([&] { checkCharacterSet(set); }), 5);
    EXPECT_NO_THROW(checkCharacterSet({"A", "e\xCC\x81", "\xF0\x9F\x98\x80"}));
}

}  // namespace
}  // namespace dravik
