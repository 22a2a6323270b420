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
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "engine/recogniser/CharacterPatch.h"
#include "engine/recogniser/RecognisedCharacters.h"
#include "engine/segmentation/PrintLooks.h"
#include "engine/segmentation/Segmentation.h"
#include "evaluate/TrueBoxes.h"
#include "generate/Camera.h"
#include "generate/Conditions.h"
#include "generate/Texts.h"
#include "generate/Typeface.h"

namespace dravik {

using namespace engine;
namespace {

// Patches of a character that is found once, each differently believed to be somewhere.
constexpr int kPatchesOfEach = 2;
// Images in which the engine searches for the look that suits them best.
constexpr float kSearchShare = 0.04f;
constexpr std::uint8_t kNone = static_cast<std::uint8_t>(kRecognisedCharacters.size());

enum class FaceKind : std::uint8_t { Outline, Strokes, Dots, Raster };

struct FaceName {
    FaceKind kind;
    std::string file;
};

std::vector<FaceName> faceNames(const std::string& file) {
    std::ifstream in(file);
    std::vector<FaceName> result;
    for (std::string kind, name; in >> kind && std::getline(in >> std::ws, name);) {
        const FaceKind of = kind == "outline"   ? FaceKind::Outline
                            : kind == "strokes" ? FaceKind::Strokes
                            : kind == "dots"    ? FaceKind::Dots
                                                : FaceKind::Raster;
        result.push_back({of, name});
    }
    if (result.empty()) throw std::runtime_error("There are no faces in " + file);
    return result;
}

// The faces, opened when they are first wanted.
class Faces {
  public:
    explicit Faces(const std::string& file) {
        for (const FaceName& name : faceNames(file)) {
            (name.kind == FaceKind::Raster || name.kind == FaceKind::Dots ? dots_ : outlines_)
                .push_back(name);
            if (name.kind == FaceKind::Outline) rasters_.push_back({FaceKind::Raster, name.file});
        }
    }

    struct Drawn {
        FaceKind kind;
        const Typeface* face;
    };
    // Two of three images are of outlines or strokes, the others of dots: of dot faces, or of outlines
    // brought to a few rows.
    Drawn any(Random& random) {
        if (!random.chance(kDotShare)) {
            const FaceName& name = random.of(outlines_);
            return {name.kind, opened(name, 0)};
        }
        for (;;) {
            const FaceName& name = random.chance(0.55f) ? random.of(dots_) : random.of(rasters_);
            const int rows =
                name.kind == FaceKind::Raster
                    ? rows_[static_cast<std::size_t>(random.whole(0, static_cast<int>(rows_.size()) - 1))]
                    : 0;
            if (const Typeface* face = opened(name, rows)) return {name.kind, face};
        }
    }

  private:
    static constexpr float kDotShare = 0.33f;
    static constexpr std::array rows_ = {7, 7, 8, 9, 10, 11, 12, 14, 16};

    // Null when the outlines have no such size.
    const Typeface* opened(const FaceName& name, int rows) {
        const auto key = std::pair(name.file, rows);
        if (const auto known = faces_.find(key); known != faces_.end()) return known->second.get();
        std::unique_ptr<Typeface> face;
        if (name.kind == FaceKind::Strokes)
            face = faceOfStrokes(name.file);
        else if (rows == 0)
            face = faceFromFile(name.file);
        else
            try {
                face = faceOfDots(name.file, rows);
            } catch (const std::runtime_error&) {
            }
        return faces_.emplace(key, std::move(face)).first->second.get();
    }

    std::vector<FaceName> outlines_, dots_, rasters_;
    std::map<std::pair<std::string, int>, std::unique_ptr<Typeface>> faces_;
};

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

// A true character in the frame of what was found.
struct TrueCharacter {
    Box box;
    float baseline = 0;
    std::uint8_t label = kNone;
};

std::vector<TrueCharacter> trueCharacters(const Picture& picture, const Segmentation& found) {
    std::vector<TrueCharacter> result;
    const InkImage& ink = found.ink;
    for (const SeenCharacter& one : picture.characters) {
        TrueCharacter& truth = result.emplace_back();
        const Box seen{static_cast<float>(one.left), static_cast<float>(one.top),
                       static_cast<float>(one.right), static_cast<float>(one.bottom)};
        truth.box = inFrame(seen, found.frame, ink.left, ink.top, ink.scale);
        truth.baseline = found.frame.across((seen.middleX() - static_cast<float>(ink.left)) / ink.scale,
                                            (one.baseline - static_cast<float>(ink.top)) / ink.scale);
        truth.label = static_cast<std::uint8_t>(recognisedPlace(one.printed.character).value_or(kNone));
    }
    return result;
}

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

// Bars, strokes and blots where there may be anything on a part.
void printStrangeThings(Print& print, Random& random) {
    const float cap = print.capHeight, width = static_cast<float>(print.width()),
                height = static_cast<float>(print.height());
    const int nobody = static_cast<int>(print.characters.size());
    if (random.chance(0.5f)) {
        // A bar code above or below the print.
        const float tall = random.between(0.6f, 3) * cap;
        const float top = random.chance(0.5f) ? -tall + random.between(0.1f, 0.5f) * cap
                                              : height - random.between(0.1f, 0.5f) * cap;
        const float thin = random.between(0.04f, 0.12f) * cap;
        for (float x = random.between(0, 0.5f) * width; x < width;) {
            const float bar = thin * static_cast<float>(random.whole(1, 4));
            for (float at = x; at < x + bar; at += 1) print.stroke(at, top, at, top + tall, 0.6f, 1, nobody);
            x += bar + thin * static_cast<float>(random.whole(1, 4));
        }
        return;
    }
    for (int i = random.whole(1, 4); i > 0; --i) {
        float x = random.between(0, width), y = random.between(0, height), turn = random.between(0, 6.2832f);
        const float bend = random.between(-0.5f, 0.5f), radius = random.between(0.03f, 0.12f) * cap;
        for (int step = random.whole(1, 8); step > 0; --step, turn += bend) {
            const float nextX = x + 0.25f * cap * std::cos(turn), nextY = y + 0.25f * cap * std::sin(turn);
            print.stroke(x, y, nextX, nextY, radius, 1, nobody);
            x = nextX;
            y = nextY;
        }
    }
}

// What the engine finds; mostly by one look that suits the print, since the search for the best one takes
// long.
Segmentation foundIn(const GreyImage& image, const Conditions& conditions, bool dots, Random& random) {
    if (random.chance(kSearchShare)) return segment(image);
    const float cap = conditions.style.capHeight;
    const float scale = cap < 19 ? 0.5f : std::max(1.0f, std::round(cap / 32));
    const float height = cap / scale * random.between(0.88f, 1.14f);
    Look look;
    look.dark = conditions.view.darkPrint;
    look.side = std::max(8, static_cast<int>(std::lround(0.75f * height)));
    const float how = random.share();
    if (how < (dots ? 0.55f : 0.7f))
        look.joins = dots ? Look::Dots : Look::Fragments;
    else if (how < 0.95f)
        look.blur = random.of(std::vector{0.0f, 0.045f, 0.07f, 0.095f}) * height;
    else
        look.joins = Look::Fragments;
    return seenAgain(image, {0, 0, image.width(), image.height()}, scale, look);
}

void addPatches(const Picture& picture, const Conditions& conditions, FaceKind kind, Output& output,
                Random& random) {
    const bool dots = kind == FaceKind::Dots || kind == FaceKind::Raster;
    const Segmentation found = foundIn(picture.image, conditions, dots, random);
    const float capHeight = conditions.style.capHeight;
    if (found.glyphs.empty()) return;
    const float cap = capHeight / found.ink.scale;
    const std::vector<TrueCharacter> characters = trueCharacters(picture, found);
    std::vector<Truth> truths;
    const auto lineOf = [&](const Glyph& glyph) { return found.lines[static_cast<std::size_t>(glyph.line)]; };
    const auto add = [&](const Piece& piece, const LineMetrics& line, std::uint8_t label) {
        output.add(characterPatch(found.ink, found.frame, moved(piece, cap, random), line), label, kind);
    };
    for (const Glyph& glyph : found.glyphs) {
        const Truth truth = truths.emplace_back(truthOf(glyph.piece.box, characters, cap));
        if (truth.kind == Truth::Whole && truth.character->label != kNone)
            for (int i = 0; i < kPatchesOfEach; ++i)
                add(glyph.piece, believed(lineOf(glyph), truth.character, cap, random),
                    truth.character->label);
        else if (truth.kind == Truth::None)
            add(glyph.piece, believed(lineOf(glyph), truth.character, cap, random), kNone);
    }
    for (std::size_t i = 0; i < found.glyphs.size(); ++i) {
        if (truths[i].kind != Truth::Whole || !random.chance(0.5f)) continue;
        const Glyph& glyph = found.glyphs[i];
        const LineMetrics line = believed(lineOf(glyph), truths[i].character, cap, random);
        const Box& box = glyph.piece.box;
        if (const std::optional<Piece> part = partOf(glyph.piece, found.frame, random.chance(0.5f))) {
            add(*part, line, kNone);
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
            if (both.box.width() > 0.3f * cap) add(both, line, kNone);
        } else if (box.width() > 0.38f * cap && box.height() > 0.3f * cap) {
            auto [left, right] =
                cut(glyph.piece, found.frame, box.left + random.between(0.3f, 0.7f) * box.width());
            Piece& half = random.chance(0.5f) ? left : right;
            if (half.area == 0) continue;
            half.measure(found.frame);
            add(half, line, kNone);
        }
    }
}

void addImage(Faces& faces, std::uint32_t seed, Output& output) {
    Random random(seed);
    const Faces::Drawn drawn = faces.any(random);
    const bool dots = drawn.face->isDotMatrix();
    const float how = random.share();
    Conditions conditions = how < 0.45f  ? usualConditions(random, dots)
                            : how < 0.8f ? extremeConditions(random, dots)
                                         : learningConditions(random, dots);
    conditions.style.capHeight = std::min(conditions.style.capHeight, 42.0f);
    if (random.chance(0.15f)) conditions.view.slant = random.between(-0.1f, 0.25f);
    if (random.chance(0.15f)) conditions.style.wander = random.between(0.01f, 0.05f);
    if (random.chance(0.1f)) conditions.style.pairTouching = 0.15f;
    const float what = random.share();
    std::vector<std::string> text = what < 0.5f    ? charsetText(random, 4)
                                    : what < 0.9f  ? partText(random, conditions.lines)
                                    : what < 0.95f ? sheetText(random)
                                                   : unusualText(random);
    if (what < 0.5f) text.resize(text.size() / 2);
    if (text.size() > 4) text.resize(4);
    for (std::string& line : text)
        std::erase_if(line, [&](char c) { return c != ' ' && !drawn.face->has(c); });
    Print print = drawn.face->print(text, conditions.style, random);
    if (print.characters.empty()) return;
    if (random.chance(0.12f)) printStrangeThings(print, random);
    damage(print, conditions, random);
    // What is no character counts as one while it is photographed, since it has an owner, and is then
    // forgotten.
    const std::size_t count = print.characters.size();
    print.characters.push_back({"", 0, 0});
    Picture picture = seen(print, conditions.view, random);
    picture.characters.resize(count);
    addPatches(picture, conditions, drawn.kind, output, random);
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    if (argc < 5) {
        std::fprintf(stderr, "usage: dravik_patches FACES FOLDER IMAGES SEED [FIRST]\n");
        return 2;
    }
    try {
        dravik::Faces faces(argv[1]);
        dravik::Output output(argv[2]);
        const auto seed = static_cast<std::uint32_t>(std::atoll(argv[4]));
        const std::uint32_t first = argc > 5 ? static_cast<std::uint32_t>(std::atoll(argv[5])) : 0;
        for (std::uint32_t i = 0; i < static_cast<std::uint32_t>(std::atoll(argv[3])); ++i)
            dravik::addImage(faces, seed * 1'000'003u + first + i, output);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
