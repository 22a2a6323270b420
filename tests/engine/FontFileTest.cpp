// Font files: nothing is lost by storing, and nothing damaged is taken for a font.
#include "engine/font/FontFile.h"

#include "engine/font/FontParts.h"
#include "engine/font/SampleOrigin.h"
#include "support/Testing.h"

namespace dravik {

using namespace engine;
namespace {

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

std::string refusal(std::span<const std::uint8_t> bytes) {
    try {
        decodeFont(bytes, "fonts/x.nnd");
    } catch (const Failure& failure) {
        EXPECT_NE(failure.description().find("fonts/x.nnd"), std::string::npos);
        return failure.description();
    }
    return "";
}

void seal(std::vector<std::uint8_t>& bytes) {
    std::uint32_t value = 0xFFFFFFFFu;
    for (std::size_t i = 0; i + 4 < bytes.size(); ++i) {
        value ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1) ? 0xEDB88320u : 0u);
    }
    value = ~value;
    for (std::size_t i = 0; i < 4; ++i)
        bytes[bytes.size() - 4 + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

TEST(FontFile, StoresEverything) {
    const FontRecord font = smallFont();
    const FontRecord back = decodeFont(encodeFont(font), "x");
    EXPECT_EQ(back.characterSet, font.characterSet);
    EXPECT_EQ(back.nextSerial, font.nextSerial);
    EXPECT_EQ(back.distances, font.distances);
    ASSERT_EQ(back.samples.size(), font.samples.size());
    for (std::size_t i = 0; i < font.samples.size(); ++i) {
        EXPECT_EQ(back.samples[i].serial, font.samples[i].serial);
        EXPECT_EQ(back.samples[i].code, font.samples[i].code);
        EXPECT_EQ(back.samples[i].inputs, font.samples[i].inputs);
    }
    EXPECT_EQ(back.training.characters, font.training.characters);
    EXPECT_EQ(back.training.network, font.training.network);
    EXPECT_TRUE(decodeFont(encodeFont({}), "x").training.empty());
}

TEST(FontFile, KeepsWhereSamplesComeFrom) {
    const FontRecord font = seenFont();
    const std::vector<std::uint8_t> bytes = encodeFont(font);
    const FontRecord back = decodeFont(bytes, "x");
    for (const std::size_t i : {0, 2}) {
        ASSERT_TRUE(back.samples[i].origin);
        EXPECT_EQ(back.samples[i].origin->picture, font.samples[i].origin->picture);
        EXPECT_EQ(back.samples[i].origin->image->name, font.samples[i].origin->image->name);
        EXPECT_EQ(back.samples[i].origin->image->digest, 77U);
        EXPECT_EQ(back.samples[i].origin->box, font.samples[i].origin->box);
    }
    EXPECT_EQ(back.samples[0].origin->image, back.samples[2].origin->image) << "a name is kept once";
    EXPECT_FALSE(back.samples[1].origin);
    EXPECT_EQ(encodeFont(back), bytes);
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
    EXPECT_NE(refusal({}).find("empty"), std::string::npos);
    EXPECT_NE(refusal(std::vector<std::uint8_t>(500, 'x')).find("no font file"), std::string::npos);
    EXPECT_NE(refusal(std::span(good).first(100)).find("ends early"), std::string::npos);
    std::vector<std::uint8_t> later = good;
    later[8] = 3;
    seal(later);
    EXPECT_NE(refusal(later).find("version 3"), std::string::npos);
    // A part that would be lost by saving the font again, and one that stands twice.
    const auto refusalWith = [](std::vector<std::uint8_t> bytes, std::string_view part) {
        bytes[8] = 2;
        bytes.insert(bytes.end() - 4, part.begin(), part.end());
        for (std::size_t i = 0; i < 4; ++i) bytes[16 + i] = static_cast<std::uint8_t>(bytes.size() >> 8 * i);
        seal(bytes);
        return refusal(bytes);
    };
    EXPECT_NE(refusalWith(good, {"ROIS\0\0\0\0", 8}).find("a part \"ROIS\" that this program does not know"),
              std::string::npos);
    const std::vector<std::uint8_t> seen = encodeFont(seenFont());
    const std::string text(seen.begin(), seen.end() - 4);
    EXPECT_NE(refusalWith(seen, text.substr(text.rfind("SEEN"))).find("out of order"), std::string::npos);
    FontRecord large;
    large.samples.resize(100'000);
    large.distances.resize(100'000);
    EXPECT_NE(refusal(encodeFont(large)).find("100000 samples, and a font at most 99999"), std::string::npos);
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

    const std::function<void(FontRecord&)> spoilings[] = {
        [](FontRecord& font) { std::swap(font.samples[0].serial, font.samples[2].serial); },
        [](FontRecord& font) { font.samples[1].inputs[7] = 1.5f; },
        [](FontRecord& font) { font.samples[1].inputs[kHeightInput] = 1e30f; },
        [](FontRecord& font) { font.distances[1] = -0.5; },
        [](FontRecord& font) { font.training.network.hidden = 0; }};
    for (const auto& spoil : spoilings) {
        FontRecord font = smallFont();
        spoil(font);
        EXPECT_NE(refusal(encodeFont(font)), "") << &spoil - spoilings;
    }
    const std::function<void(SampleOrigin&)> spoiledOrigins[] = {
        [](SampleOrigin& origin) { origin.picture.width = 33; },
        [](SampleOrigin& origin) { origin.picture.height = 0; },
        [](SampleOrigin& origin) { origin.picture.packed.resize(5000); },
        [](SampleOrigin& origin) {
            origin.image = std::make_shared<const SourceImage>(SourceImage{std::string(5000, 'x')});
        }};
    for (const auto& spoil : spoiledOrigins) {
        FontRecord font = seenFont();
        SampleOrigin origin = *font.samples[2].origin;
        spoil(origin);
        font.samples[2].origin = std::make_shared<const SampleOrigin>(std::move(origin));
        EXPECT_NE(refusal(encodeFont(font)), "") << &spoil - spoiledOrigins;
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
    Network huge;
    huge.hidden = 4096;
    huge.codes.resize(4097);
    huge.means.resize(kInputCount), huge.scales.resize(kInputCount);
    huge.first.resize(kInputCount * 4096), huge.firstBias.resize(4096);
    huge.second.resize(4096 * 4097), huge.secondBias.resize(4097);
    bad.push_back(smallFont()), bad.back().training.network = std::move(huge);
    for (std::size_t i = 0; i < bad.size(); ++i) {
        EXPECT_NE(refusal(encodeFont(bad[i])), "") << i;
        const Failure failure = test::failureOfAction([&] { exportFont(bad[i], file); });
        EXPECT_EQ(failure.number(), 57) << i;
        EXPECT_NE(failure.description().find(file), std::string::npos);
        EXPECT_EQ(readFont(file).characterSet, smallFont().characterSet) << i;
    }
    for (const tool::CharacterSet& set : {tool::CharacterSet{"A", "A"}, {"\n"}, {""}})
        EXPECT_EQ(test::refusal([&] { checkCharacterSet(set); }), 5);
    EXPECT_NO_THROW(checkCharacterSet({"A", "e\xCC\x81", "\xF0\x9F\x98\x80"}));
}

}  // namespace
}  // namespace dravik
