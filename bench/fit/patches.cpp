// Makes the patches that the base recogniser is fitted on: part images in hundreds of faces under all
// conditions, in which the engine finds the characters itself; each becomes a patch with what it truly is.
// Where the engine found a half, a double or dirt, and where halves and doubles are made on purpose, the
// patch is of no character.
//
//     dravik_patches FACES FOLDER IMAGES SEED [FIRST]
//
// FACES names a face in each row: outline|strokes|dots|raster FILE. Writes FOLDER/patches.bin, for each patch
// the planes of its own ink and of the others', and FOLDER/labels.bin, for each patch two bytes: the
// character's place in recognisedCharacters() or their number for none, and the kind of the face. Image FIRST
// and those after it depend on SEED and their number alone, so that a set may be made in parts.
#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "engine/recogniser/CharacterPatch.h"
#include "engine/segmentation/CharacterCuts.h"
#include "fit/FittingImages.h"

namespace dravik {

using namespace engine;
namespace {

// Patches of a character that is found once, each differently believed to be somewhere.
constexpr int kPatchesOfEach = 2;
constexpr float kTouchingShare = 0.1f;

class Output {
  public:
    explicit Output(const std::string& folder)
        : patches_(folder + "/patches.bin", std::ios::binary),
          labels_(folder + "/labels.bin", std::ios::binary) {
        if (!patches_ || !labels_) throw std::runtime_error("Cannot write to " + folder);
    }
    void add(const CharacterPatch& patch, std::uint8_t label, FaceKind kind) {
        for (const CharacterPatch::Plane* plane : {&patch.own, &patch.others})
            patches_.write(reinterpret_cast<const char*>(plane->data()),
                           static_cast<std::streamsize>(plane->size()));
        const char row[2] = {static_cast<char>(label), static_cast<char>(kind)};
        labels_.write(row, 2);
    }

  private:
    std::ofstream patches_, labels_;
};

float overlap(const Box& a, const Box& b) {
    const float width = std::min(a.right, b.right) - std::max(a.left, b.left);
    const float height = std::min(a.bottom, b.bottom) - std::max(a.top, b.top);
    return width > 0 && height > 0 ? width * height : 0;
}
float area(const Box& box) {
    return std::max(0.01f, box.width()) * std::max(0.01f, box.height());
}
Box widened(const Box& box, float by) {
    return {box.left - by, box.top - by, box.right + by, box.bottom + by};
}

// What a piece is: a character whole and alone, none, or in doubt.
struct Truth {
    enum Kind { Whole, None, Doubtful } kind = Doubtful;
    const TrueCharacter* character = nullptr;  // that it shares most with; null where there is none near
};

Truth truthOf(const Box& box, const std::vector<TrueCharacter>& characters, float cap) {
    const float room = 0.06f * cap;
    Truth truth;
    float most = 0;
    int inside = 0;
    for (const TrueCharacter& one : characters) {
        const float shared = overlap(widened(box, room), one.box) / area(one.box);
        if (shared > 0.45f) ++inside;
        const float both = overlap(widened(box, room), widened(one.box, room));
        if (both > most) {
            most = both;
            truth.character = &one;
        }
    }
    if (!truth.character) {
        truth.kind = Truth::None;
        return truth;
    }
    const Box& own = truth.character->box;
    const float covered = overlap(widened(box, room), own) / area(own);
    const float used = overlap(widened(own, room), box) / area(box);
    const float wider = box.width() / std::max(own.width(), 0.1f * cap);
    if (inside == 1 && covered > 0.85f && used > 0.8f)
        truth.kind = Truth::Whole;
    else if (inside > 1 && wider > 1.25f && used < 0.8f)
        truth.kind = Truth::None;
    else if (covered < 0.62f || used < 0.5f)
        truth.kind = Truth::None;
    return truth;
}

// Where the line of a piece is believed to be: as found, or where it truly is, and somewhat off.
LineMetrics believed(const LineMetrics& found, const TrueCharacter* truth, float trueCap, Random& random) {
    LineMetrics line = found;
    if (truth) {
        const bool near = std::abs(std::log(found.capHeight / trueCap)) < 0.14f &&
                          std::abs(found.baseline - truth->baseline) < 0.12f * trueCap;
        if (!near || random.chance(0.5f)) {
            line.capHeight = trueCap;
            line.baseline = truth->baseline;
        }
    }
    const float spread = random.chance(0.15f) ? 0.08f : 0.04f;
    line.capHeight *= std::exp(spread * random.normal());
    line.baseline += 0.8f * spread * line.capHeight * random.normal();
    return line;
}

// A piece that is moved a little along its line, as an edge that was found elsewhere moves its middle.
Piece moved(Piece piece, float cap, Random& random) {
    const float by = 0.025f * cap * random.normal();
    piece.box.left += by;
    piece.box.right += by;
    return piece;
}

// The part of a piece above or below its widest gap across the line; nothing when it has none.
std::optional<Piece> partOf(const Piece& piece, const Frame& frame, bool upper) {
    std::map<int, int> rows;
    for (const Run& run : piece.runs) rows[run.y] += run.x1 - run.x0;
    int gap = -1;
    for (auto row = rows.begin(); row != rows.end(); ++row)
        if (const auto next = std::next(row); next != rows.end() && next->first > row->first + 2)
            gap = row->first;
    if (gap < 0) return std::nullopt;
    Piece part;
    for (const Run& run : piece.runs)
        if ((run.y <= gap) == upper) {
            part.runs.push_back(run);
            part.area += run.x1 - run.x0;
        }
    part.measure(frame);
    return part;
}

void addPatches(const FittingImage& image, Output& output, Random& random) {
    const Segmentation found = foundIn(image, random);
    if (found.glyphs.empty()) return;
    const float cap = image.conditions.style.capHeight / found.ink.scale;
    const std::vector<TrueCharacter> characters = trueCharacters(image.picture, found);
    std::vector<Truth> truths;
    const auto lineOf = [&](const Glyph& glyph) { return found.lines[static_cast<std::size_t>(glyph.line)]; };
    const auto add = [&](const Piece& piece, const LineMetrics& line, std::uint8_t label) {
        output.add(characterPatch(found.ink, found.frame, moved(piece, cap, random), line), label,
                   image.kind);
    };
    for (const Glyph& glyph : found.glyphs) {
        const Truth truth = truths.emplace_back(truthOf(glyph.piece.box, characters, cap));
        if (truth.kind == Truth::Whole && truth.character->label != kNoneOfThem)
            for (int i = 0; i < kPatchesOfEach; ++i)
                add(glyph.piece, believed(lineOf(glyph), truth.character, cap, random),
                    truth.character->label);
        else if (truth.kind == Truth::None)
            add(glyph.piece, believed(lineOf(glyph), truth.character, cap, random), kNoneOfThem);
    }
    for (std::size_t i = 0; i < found.glyphs.size(); ++i) {
        if (truths[i].kind != Truth::Whole || !random.chance(0.5f)) continue;
        const Glyph& glyph = found.glyphs[i];
        const LineMetrics line = believed(lineOf(glyph), truths[i].character, cap, random);
        const Box& box = glyph.piece.box;
        if (const std::optional<Piece> part = partOf(glyph.piece, found.frame, random.chance(0.5f))) {
            add(*part, line, kNoneOfThem);
            continue;
        }
        const bool next = i + 1 < found.glyphs.size() && found.glyphs[i + 1].line == glyph.line;
        if (next && random.chance(0.45f)) {
            Piece both = glyph.piece, other = found.glyphs[i + 1].piece;
            if (random.chance(0.3f)) {
                // The end of one character with the next, or one with the beginning of the next.
                const float at = random.between(0.35f, 0.65f);
                if (random.chance(0.5f))
                    both = cut(both, found.frame, box.left + at * box.width()).second;
                else
                    other = cut(other, found.frame, other.box.left + at * other.box.width()).first;
                if (both.area == 0 || other.area == 0) continue;
            }
            both.join(std::move(other));
            both.measure(found.frame);
            if (both.box.width() > 0.3f * cap) add(both, line, kNoneOfThem);
        } else if (box.width() > 0.38f * cap && box.height() > 0.3f * cap) {
            auto [left, right] =
                cut(glyph.piece, found.frame, box.left + random.between(0.3f, 0.7f) * box.width());
            Piece& half = random.chance(0.5f) ? left : right;
            if (half.area == 0) continue;
            half.measure(found.frame);
            add(half, line, kNoneOfThem);
        }
    }
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    return dravik::ofFittingImages<dravik::Output>(
        argc, argv, dravik::FittingShares{.touching = dravik::kTouchingShare}, dravik::addPatches);
}
