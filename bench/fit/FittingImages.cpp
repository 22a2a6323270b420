#include "fit/FittingImages.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <stdexcept>

#include "engine/recogniser/RecognisedCharacters.h"
#include "engine/segmentation/PrintLooks.h"
#include "evaluate/TrueBoxes.h"
#include "generate/Texts.h"

namespace dravik {

using namespace engine;
namespace {

// Images in which the engine searches for the look that suits them best.
constexpr float kSearchShare = 0.04f;
constexpr float kDotShare = 0.33f;
constexpr std::array kRows = {7, 7, 8, 9, 10, 11, 12, 14, 16};

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

}  // namespace

Faces::Faces(const std::string& file) {
    for (const FaceName& name : faceNames(file)) {
        (name.kind == FaceKind::Raster || name.kind == FaceKind::Dots ? dots_ : outlines_).push_back(name);
        if (name.kind == FaceKind::Outline) rasters_.push_back({FaceKind::Raster, name.file});
    }
}

Faces::Drawn Faces::any(Random& random) {
    if (!random.chance(kDotShare)) {
        const FaceName& name = random.of(outlines_);
        return {name.kind, opened(name, 0)};
    }
    for (;;) {
        const FaceName& name = random.chance(0.55f) ? random.of(dots_) : random.of(rasters_);
        const int rows =
            name.kind == FaceKind::Raster
                ? kRows[static_cast<std::size_t>(random.whole(0, static_cast<int>(kRows.size()) - 1))]
                : 0;
        if (const Typeface* face = opened(name, rows)) return {name.kind, face};
    }
}

const Typeface* Faces::opened(const FaceName& name, int rows) {
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

std::optional<FittingImage> fittingImage(Faces& faces, const FittingShares& shares, Random& random) {
    const Faces::Drawn drawn = faces.any(random);
    const bool dots = drawn.face->isDotMatrix();
    const float how = random.share();
    Conditions conditions = how < shares.usual          ? usualConditions(random, dots)
                            : how < 1 - shares.learning ? extremeConditions(random, dots)
                                                        : learningConditions(random, dots);
    conditions.style.capHeight = std::min(conditions.style.capHeight, 42.0f);
    if (random.chance(0.15f)) conditions.view.slant = random.between(-0.1f, 0.25f);
    if (random.chance(0.15f)) conditions.style.wander = random.between(0.01f, 0.05f);
    if (random.chance(shares.touching)) conditions.style.pairTouching = 0.15f;
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
    if (print.characters.empty()) return std::nullopt;
    if (random.chance(0.12f)) printStrangeThings(print, random);
    damage(print, conditions, random);
    // What is no character counts as one while it is photographed, since it has an owner, and is then
    // forgotten.
    const std::size_t count = print.characters.size();
    print.characters.push_back({"", 0, 0});
    Picture picture = seen(print, conditions.view, random);
    picture.characters.resize(count);
    return FittingImage{drawn.kind, conditions, std::move(picture)};
}

Segmentation foundIn(const FittingImage& of, Random& random) {
    const GreyImage& image = of.picture.image;
    const Conditions& conditions = of.conditions;
    const bool dots = of.kind == FaceKind::Dots || of.kind == FaceKind::Raster;
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
        truth.label = static_cast<std::uint8_t>(recognisedPlace(one.printed.character).value_or(kNoneOfThem));
    }
    return result;
}

}  // namespace dravik
