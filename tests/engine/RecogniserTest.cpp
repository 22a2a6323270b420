// Reading without a font. The examples come from the program that fitted the network: patches of faces that
// it was not fitted on, and what the network said of them there.
#include "engine/recogniser/BaseReader.h"

#include <cstring>

#include "contract/DrawnText.h"
#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/recogniser/CharacterContext.h"
#include "support/Testing.h"

namespace dravik {
namespace {

struct Example {
    CharacterPatch patch;
    PatchLikelihoods said;
};

std::vector<Example> examples() {
    std::ifstream in(std::string(DRAVIK_SOURCE_DIR) + "/tests/engine/corpus/recogniser_examples.bin",
                     std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    constexpr std::size_t each = sizeof(CharacterPatch) + sizeof(PatchLikelihoods);
    std::vector<Example> result(bytes.size() / each);
    for (std::size_t i = 0; i < result.size(); ++i) {
        std::memcpy(&result[i].patch, &bytes[i * each], sizeof(CharacterPatch));
        std::memcpy(&result[i].said, &bytes[i * each + sizeof(CharacterPatch)], sizeof(PatchLikelihoods));
    }
    return result;
}

std::vector<CharacterPatch> patchesOf(const std::vector<Example>& examples) {
    std::vector<CharacterPatch> patches;
    for (const Example& one : examples) patches.push_back(one.patch);
    return patches;
}

double furthest(const PatchLikelihoods& a, const PatchLikelihoods& b) {
    double most = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        most = std::max(most,
                        std::abs(std::exp(static_cast<double>(a[i])) - std::exp(static_cast<double>(b[i]))));
    return most;
}

// Weights of bytes instead of floats change a likelihood by a few hundredths where it is in doubt.
TEST(BaseNetwork, SaysWhatItSaidWhereItWasFitted) {
    const std::vector<Example> known = examples();
    ASSERT_GE(known.size(), 40u);
    const std::vector<PatchLikelihoods> says = patchLikelihoods(patchesOf(known));
    double sum = 0;
    for (std::size_t i = 0; i < known.size(); ++i) {
        EXPECT_LT(furthest(says[i], known[i].said), 0.1) << i;
        sum += furthest(says[i], known[i].said);
        double whole = 0;
        for (const float one : says[i]) whole += std::exp(static_cast<double>(one));
        EXPECT_NEAR(whole, 1, 1e-4) << i;
    }
    EXPECT_LT(sum / static_cast<double>(known.size()), 0.01);
    EXPECT_NE(baseNetworkOrigin().find("faces from:"), std::string_view::npos);
}

// However many patches go together, and on whichever machine.
TEST(BaseNetwork, SaysTheSameOnEveryInstructionSet) {
    const std::vector<CharacterPatch> patches = patchesOf(examples());
    const std::vector<PatchLikelihoods> best = patchLikelihoods(patches);
    for (const MatrixKernels* kernels : availableKernels()) {
        EXPECT_EQ(patchLikelihoods(patches, *kernels), best) << kernels->name;
        for (std::size_t i = 0; i < patches.size(); ++i)
            EXPECT_EQ(patchLikelihoods(std::span(patches).subspan(i, 1), *kernels).front(), best[i])
                << kernels->name;
    }
    EXPECT_TRUE(patchLikelihoods({}).empty());
}

// Ink of one character, of its neighbour, and the soft edges between them, at two sizes.
TEST(CharacterPatch, ShowsTheCharacterAndItsNeighboursAtOneSize) {
    for (const int size : {1, 2}) {
        InkImage ink;
        ink.width = 60 * size;
        ink.height = 40 * size;
        ink.ink.assign(static_cast<std::size_t>(ink.width * ink.height), 0);
        Piece piece;
        const auto bar = [&](int left, int right, bool own) {
            for (int y = 10 * size; y < 31 * size; ++y) {
                for (int x = left * size; x < right * size; ++x)
                    ink.ink[static_cast<std::size_t>(y * ink.width + x)] = 255;
                if (own) {
                    piece.runs.push_back({left * size, right * size, y});
                    piece.area += (right - left) * size;
                }
            }
        };
        bar(27, 33, true);
        bar(40, 43, false);
        const Frame frame;
        piece.measure(frame);
        const float unit = static_cast<float>(size);
        const CharacterPatch patch = characterPatch(ink, frame, piece, {31 * unit, 21 * unit, false});
        const auto at = [](const CharacterPatch::Plane& plane, int column, int row) {
            return static_cast<int>(plane[static_cast<std::size_t>(row * kPatchSide + column)]);
        };
        // Capitals from row 4.5 to 18.5; 1.5 points to a cell.
        EXPECT_EQ(at(patch.own, 11, 12), 255) << size;
        EXPECT_EQ(at(patch.own, 12, 5), 255) << size;
        EXPECT_EQ(at(patch.own, 12, 17), 255) << size;
        EXPECT_LT(at(patch.own, 12, 3), 30) << size;
        EXPECT_LT(at(patch.own, 12, 20), 30) << size;
        EXPECT_NEAR(at(patch.own, 12, 18), 128, 50) << size;
        EXPECT_EQ(at(patch.own, 19, 12), 0) << size;
        EXPECT_GT(at(patch.others, 19, 12), 200) << size;
        EXPECT_EQ(at(patch.others, 12, 12), 0) << size;
    }
}

std::string textOf(const std::vector<SuggestedCharacter>& read) {
    std::string text;
    for (const SuggestedCharacter& one : read) text += one.best().character;
    return text;
}

// Sample parts of six faces, none of which the network was fitted on.
TEST(BaseReader, ReadsPartsWithoutAFont) {
    int characters = 0, wrong = 0, images = 0;
    for (const LabelledImage& image :
         labelledImages(std::string(DRAVIK_SOURCE_DIR) + "/data/parts/rendered_lines")) {
        const GreyImage pixels = readPng(image.file);
        const std::string read = textOf(readWithoutFont(segment(pixels, takeWholeCharacters)));
        ++images;
        characters += static_cast<int>(image.text.size());
        ASSERT_EQ(read.size(), image.text.size()) << image.name;
        for (std::size_t i = 0; i < read.size(); ++i) wrong += read[i] != image.text[i] ? 1 : 0;
    }
    EXPECT_EQ(images, 48);
    EXPECT_LE(wrong, characters / 50) << "of " << characters;
}

TEST(BaseReader, NamesTheCharacterThatATextDoesNotGoWith) {
    const std::string folder = std::string(DRAVIK_SOURCE_DIR) + "/data/parts/rendered_lines";
    int doubted = 0, named = 0, images = 0;
    for (const LabelledImage& image : labelledImages(folder)) {
        const Segmentation found = segment(readPng(image.file));
        std::vector<std::string> text = characters(image.text);
        ++images;
        for (const CharacterLikelihood& one : compareWithText(found, text))
            doubted += one.disagrees() ? 1 : 0;
        const std::size_t place = text.size() / 2;
        // What many faces draw alike is no mistake that can be seen.
        for (const auto& [typed, printed] : {std::pair{"O", "0"}, {"l", "1"}, {"x", "X"}})
            if (text[place] == printed) {
                std::vector<std::string> alike = text;
                alike[place] = typed;
                EXPECT_FALSE(compareWithText(found, alike)[place].disagrees());
            }
        text[place] = text[place] == "M" ? "8" : "M";
        const std::vector<CharacterLikelihood> compared = compareWithText(found, text);
        ASSERT_EQ(compared.size(), text.size());
        named += compared[place].disagrees() && compared[place].expected == text[place] ? 1 : 0;
        // A character of no overview says nothing; of another number of characters nothing can be said.
        text[place] = "\xC3\x84";
        EXPECT_FALSE(compareWithText(found, text)[place].disagrees());
        text.pop_back();
        EXPECT_TRUE(compareWithText(found, text).empty());
    }
    EXPECT_EQ(doubted, 0);
    EXPECT_GE(named, images * 9 / 10);
}

TEST(BaseReader, FindsNothingInNothing) {
    EXPECT_TRUE(readWithoutFont(Segmentation()).empty());
    EXPECT_TRUE(compareWithText(Segmentation(), {}).empty());
}

// "O" is as likely as "0" by its shape, "B" is clearly a "B".
TEST(CharacterContext, DecidesBetweenShapesThatHardlyDifferAlone) {
    const auto oneOf = [](std::string_view shapes, double first) {
        PatchLikelihoods one;
        one.fill(std::log(1e-6f));
        one[*recognisedPlace(shapes.substr(0, 1))] = static_cast<float>(std::log(first));
        if (shapes.size() > 1)
            one[*recognisedPlace(shapes.substr(1))] = static_cast<float>(std::log(1 - first));
        return one;
    };
    const auto read = [](const std::vector<PatchLikelihoods>& line) {
        std::string text;
        for (const std::size_t place : likeliestTogether(line)) text += kRecognisedCharacters[place];
        return text;
    };
    const auto two = oneOf("2", 0.999), unsure = oneOf("O0", 0.6), clear = oneOf("B8", 0.99);
    EXPECT_EQ(read({two, unsure, two}), "202");
    EXPECT_EQ(read({oneOf("L", 0.999), unsure, oneOf("T", 0.999)}), "LOT");
    EXPECT_EQ(read({two, clear, two}), "2B2");
    EXPECT_EQ(read({unsure}), "O");
    EXPECT_EQ(read({}), "");
}

}  // namespace
}  // namespace dravik
