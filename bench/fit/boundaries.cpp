// Makes the lines that the network of boundaries is fitted on: part images in hundreds of faces under all
// conditions, in many of which characters touch; each line of print that the engine finds becomes a strip,
// with what each of its columns truly is.
//
//     dravik_boundaries FACES FOLDER IMAGES SEED [FIRST]
//
// Writes FOLDER/strips.bin, for each line: its columns (two bytes, the lower one first), the kind of the face
// (a byte), the rows of its ink, and for each column two bytes: 0 inside a character, 1 between two or where
// there is none, 255 in doubt; and which character, or 255. Image FIRST and those after it depend on SEED and
// their number alone.
#include <algorithm>
#include <cmath>
#include <fstream>
#include <stdexcept>

#include "engine/recogniser/LineStrip.h"
#include "fit/FittingImages.h"

namespace dravik {

using namespace engine;
namespace {

constexpr float kTouchingShare = 0.4f;
constexpr std::uint8_t kInside = 0, kBetween = 1, kInDoubt = 255;
// Columns around the middle between two characters that are a boundary, and in doubt; and columns beside a
// character's side that are in doubt.
constexpr float kBoundary = 0.6f, kNearBoundary = 1.5f, kNearSide = 0.6f;

class Output {
  public:
    explicit Output(const std::string& folder) : strips_(folder + "/strips.bin", std::ios::binary) {
        if (!strips_) throw std::runtime_error("Cannot write to " + folder);
    }
    void add(const LineStrip& strip, FaceKind kind, const std::vector<std::uint8_t>& labels) {
        const char head[3] = {static_cast<char>(strip.columns & 255), static_cast<char>(strip.columns >> 8),
                              static_cast<char>(kind)};
        strips_.write(head, 3);
        write(strip.ink);
        write(labels);
    }

  private:
    void write(const std::vector<std::uint8_t>& bytes) {
        strips_.write(reinterpret_cast<const char*>(bytes.data()),
                      static_cast<std::streamsize>(bytes.size()));
    }
    std::ofstream strips_;
};

// What each column of the strip is, and of which character.
std::vector<std::uint8_t> columnsOf(const LineStrip& strip, const std::vector<TrueCharacter>& characters) {
    std::vector<std::uint8_t> result;
    for (int place = 0; place < strip.columns; ++place) {
        const float at = strip.middle(place);
        std::uint8_t what = kBetween, which = 255;
        for (const TrueCharacter& one : characters) {
            const float inside = std::min(at - one.box.left, one.box.right - at) / strip.column;
            if (inside > kNearSide) {
                what = kInside;
                which = one.label;
            } else if (inside > -kNearSide && what != kInside) {
                what = kInDoubt;
            }
        }
        for (std::size_t i = 0; i + 1 < characters.size(); ++i) {
            const float room = characters[i + 1].box.left - characters[i].box.right;
            const float off =
                std::abs(at - 0.5f * (characters[i].box.right + characters[i + 1].box.left)) / strip.column;
            if (off <= kBoundary)
                what = kBetween;
            else if (off <= kNearBoundary && room < 2 * strip.column)
                what = kInDoubt;
        }
        result.push_back(what);
        result.push_back(which);
    }
    return result;
}

void addStrips(const FittingImage& image, Output& output, Random& random) {
    const Segmentation found = foundIn(image, random);
    const std::vector<TrueCharacter> characters = trueCharacters(image.picture, found);
    for (std::size_t from = 0, to = 0; from < found.glyphs.size(); from = to) {
        LineMetrics line = found.lines[static_cast<std::size_t>(found.glyphs[from].line)];
        Box box = found.glyphs[from].piece.box;
        for (to = from; to < found.glyphs.size() && found.glyphs[to].line == found.glyphs[from].line; ++to)
            box.include(found.glyphs[to].piece.box);
        std::vector<TrueCharacter> own;
        for (const TrueCharacter& one : characters)
            if (std::abs(one.baseline - line.baseline) < 0.5f * line.capHeight) own.push_back(one);
        std::stable_sort(own.begin(), own.end(), [](const TrueCharacter& a, const TrueCharacter& b) {
            return a.box.middleX() < b.box.middleX();
        });
        line.capHeight *= std::exp((random.chance(0.2f) ? 0.15f : 0.05f) * random.normal());
        line.baseline += 0.05f * line.capHeight * random.normal();
        const float stretch = random.chance(0.5f) ? std::exp(0.2f * random.normal()) : 1;
        const LineStrip strip = lineStrip(found.ink, found.frame, line, box.left, box.right, stretch);
        if (strip.columns > 0) output.add(strip, image.kind, columnsOf(strip, own));
    }
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    return dravik::ofFittingImages<dravik::Output>(
        argc, argv, dravik::FittingShares{.touching = dravik::kTouchingShare}, dravik::addStrips);
}
