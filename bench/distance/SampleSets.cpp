#include "SampleSets.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

#include "base/Text.h"
#include "engine/classifier/Reading.h"
#include "engine/recogniser/BaseReader.h"

namespace dravik {

using namespace engine;
using namespace tool;

const std::string kAllCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefghijklmnopqrstuvwxyz*+-=/.,:;\"'_";

namespace {

constexpr std::size_t kPerLine = 19;

std::vector<std::uint8_t> bytesOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// A digit's picture as the engine would see it had it found it: light on dark, alone on its line.
SampleInputs digitInputs(const std::uint8_t* pixels, int side) {
    Segmentation found;
    found.ink.width = found.ink.height = side;
    found.ink.ink.assign(pixels, pixels + side * side);
    Glyph glyph;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            if (pixels[y * side + x] >= 128) {
                glyph.piece.runs.push_back({x, x + 1, y});
                ++glyph.piece.area;
            }
    glyph.piece.measure(found.frame);
    found.lines.push_back({glyph.piece.box.bottom, glyph.piece.box.height(), true});
    return glyphInputs(found, glyph, found.lines.front());
}

}  // namespace

LabelledPart charsetPart(const OutlineFont& font, std::uint32_t seed, double faults, const std::string& set) {
    std::string all = set;
    std::mt19937 random(seed);
    for (std::size_t i = all.size(); i > 1; --i) std::swap(all[i - 1], all[random() % i]);
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < all.size(); i += kPerLine) lines.push_back(all.substr(i, kPerLine));
    return {font.part(lines, seed, faults), characters(all)};
}

SampleSet renderedSamples(const OutlineFont& font, int parts, std::uint32_t seed, double faults,
                          const std::string& characters) {
    SampleSet set{font.name(), {}};
    for (int tries = 0; parts > 0 && tries < 20 * parts + 20; ++tries) {
        const LabelledPart part = charsetPart(font, seed++, faults, characters);
        const Segmentation found = segment(part.image, takeWholeCharacters);
        if (found.glyphs.size() != part.text.size()) continue;
        const std::vector<SampleInputs> inputs = allInputs(found, part.text);
        for (std::size_t i = 0; i < inputs.size(); ++i)
            set.samples.push_back({set.samples.size(), codeOf(part.text[i]), inputs[i]});
        --parts;
    }
    return set;
}

SampleSet mixedSamples(const std::vector<OutlineFont>& fonts, int parts, std::uint32_t seed, double faults) {
    SampleSet set{std::to_string(fonts.size()) + " fonts mixed", {}};
    for (const OutlineFont& font : fonts)
        for (Sample sample : renderedSamples(font, parts, seed, faults).samples) {
            sample.serial = set.samples.size();
            set.samples.push_back(sample);
        }
    return set;
}

SampleSet digitSamples(const std::string& folder) {
    SampleSet set{"MNIST digits", {}};
    const std::vector<std::uint8_t> images = bytesOf(folder + "/images-idx3-ubyte"),
                                    labels = bytesOf(folder + "/labels-idx1-ubyte");
    constexpr std::size_t kImageHeader = 16, kLabelHeader = 8;
    constexpr int kSide = 28;
    for (std::size_t i = 0;
         kLabelHeader + i < labels.size() && kImageHeader + (i + 1) * kSide * kSide <= images.size(); ++i)
        set.samples.push_back({i, '0' + labels[kLabelHeader + i],
                               digitInputs(&images[kImageHeader + i * kSide * kSide], kSide)});
    return set;
}

}  // namespace dravik
