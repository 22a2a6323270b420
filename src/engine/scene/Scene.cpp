#include "engine/scene/Scene.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <utility>

#include "engine/recogniser/BaseReader.h"
#include "engine/scene/LineByLine.h"
#include "engine/scene/OtherThings.h"
#include "engine/scene/PrintAlone.h"
#include "engine/scene/SeenLine.h"
#include "engine/segmentation/TextLikeness.h"

namespace dravik::engine {
namespace {

// Log odds from which characters are taken as they are seen in the whole picture, whatever else there may be.
constexpr double kSurelyPrint = 2.2;
// By so much, as a logarithm, characters that fill the picture may look less whole than line by line;
// measured on generated part images. Where the lines show less than half of them, they are all that there is
// when they look more whole by the second; where no line is clear, when they look less whole by no more than
// the third and the first.
constexpr double kWholePicture = 1, kMuchMoreWhole = 8, kLessWhole = 2;
// Most room, in heights of its lines, around print that may be all that a picture shows.
constexpr float kBesidePrint = 6, kAbovePrint = 6.5f;
// Rows of dots are at most so far apart, in their heights; characters of dots are so much higher than a dot.
constexpr float kRowsOfDots = 3, kMuchHigher = 3;
// Characters of dots have at least so many rows of them.
constexpr std::size_t kFewestRows = 5;
// Around characters that fill the picture.
constexpr float kMargin = 2;
// Lines that slope more are read better one by one.
constexpr float kUpright = 0.12f;  // radians
// A line that is found is at least so high, in smallest heights that characters may have.
constexpr float kLowestLine = 0.75f;
// In doubt the print alone of pictures of so many pixels is looked at, of others where nothing else shows.
constexpr std::int64_t kMostInDoubt = 500'000;
// The whole of a picture of so few pixels is looked at before any line is searched in it; that of one without
// lines, or whose lines show nothing, when it has at most so many.
constexpr std::int64_t kSmall = 160'000, kMostWithoutLines = 500'000, kMostWithoutPrint = 2'500'000;

// Most of the room on a side of a box within the picture, in heights of print.
struct Margins {
    float beside, above;
};

Margins marginsAround(const GreyImage& image, const Box& box, float height) {
    return {std::max(box.left, static_cast<float>(image.width()) - box.right) / height,
            std::max(box.top, static_cast<float>(image.height()) - box.bottom) / height};
}

float highest(std::span<const TextLine> lines) {
    float result = 0;
    for (const TextLine& line : lines) result = std::max(result, line.height());
    return result;
}

// Whether the picture may show these lines and little else.
bool mayFill(const GreyImage& image, std::span<const TextLine> lines) {
    Box box{1e9f, 1e9f, 0, 0};
    for (const TextLine& line : lines) {
        if (std::abs(line.angle) > kUpright) return false;
        box.left = std::min(box.left, line.left);
        box.right = std::max(box.right, line.right);
        box.top = std::min(box.top, line.top);
        box.bottom = std::max(box.bottom, line.bottom);
    }
    const Margins margins = marginsAround(image, box, highest(lines));
    return margins.beside < kBesidePrint && margins.above < kAbovePrint;
}

// Whether most lines are so close above or below another one as rows of dots are in large characters, where
// they seem to be lines of small ones.
bool areCloseRows(std::span<const TextLine> lines) {
    const auto isClose = [&](const TextLine& line) {
        return std::any_of(lines.begin(), lines.end(), [&](const TextLine& other) {
            const float apart = std::abs(other.middle() - line.middle());
            return isOverOrUnder(line, other) && apart > 0.5f * line.height() &&
                   apart < kRowsOfDots * line.height();
        });
    };
    return lines.size() >= kFewestRows &&
           2 * std::count_if(lines.begin(), lines.end(), isClose) > static_cast<std::ptrdiff_t>(lines.size());
}

bool isIn(const TextLine& line, float x, float y) {
    const float c = std::cos(line.angle), s = std::sin(line.angle), height = line.height();
    const float along = x * c + y * s, across = y * c - x * s;
    return along > line.left - 0.8f * height && along < line.right + 0.8f * height &&
           across > line.top - 0.3f * height && across < line.bottom + 0.45f * height;
}

// Whether what was seen in the whole picture leaves hardly any room around it.
bool isFilled(const GreyImage& image, const Segmentation& seen) {
    Box box{1e9f, 1e9f, 0, 0};
    for (const Glyph& glyph : seen.glyphs) {
        const Region place = seen.place(glyph);
        box = {std::min(box.left, static_cast<float>(place.left)),
               std::min(box.top, static_cast<float>(place.top)),
               std::max(box.right, static_cast<float>(place.right)),
               std::max(box.bottom, static_cast<float>(place.bottom))};
    }
    const Margins margins = marginsAround(image, box, std::max(1.0f, typicalHeight(seen) * seen.ink.scale));
    return margins.beside < kMargin && margins.above < kMargin;
}

// Whether what was seen in the whole picture is on the lines that were found in it, which are upright, and
// two characters or more on each of them.
bool isOnLines(const Segmentation& seen, std::span<const TextLine> lines) {
    std::vector<int> counts(lines.size());
    for (const Glyph& glyph : seen.glyphs) {
        const Region place = seen.place(glyph);
        bool isBeside = true;
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (isIn(lines[i], 0.5f * static_cast<float>(place.left + place.right),
                     0.5f * static_cast<float>(place.top + place.bottom))) {
                isBeside = false;
                ++counts[i];
            }
        if (isBeside) return false;
    }
    return std::all_of(counts.begin(), counts.end(), [](int count) { return count > 1; }) &&
           std::all_of(lines.begin(), lines.end(),
                       [](const TextLine& line) { return std::abs(line.angle) < kUpright; });
}

// Whether what was seen in the whole picture is all that it shows, beside what its lines show one by one.
bool isAll(const GreyImage& image, const Segmentation& seen, std::span<const TextLine> lines,
           const Scene& byLine) {
    if (seen.glyphs.empty()) return false;
    const auto odds = [&] {
        double sum = wholeCharacterOdds(seen) + kWholePicture;
        for (const ScenePart& part : byLine.parts) sum -= wholeCharacterOdds(part.found);
        return sum;
    };
    if (isFilled(image, seen)) return odds() > 0;
    if (isOnLines(seen, lines) && printOdds(seen) > kPerhapsPrint) return true;
    if (2 * byLine.characters() < seen.glyphs.size() && odds() > kMuchMoreWhole) return true;
    const auto isClear = [](const ScenePart& part) { return printOdds(part.found) > kClearLine; };
    return !byLine.parts.empty() && std::none_of(byLine.parts.begin(), byLine.parts.end(), isClear) &&
           odds() > -kLessWhole;
}

std::int64_t pixelsOf(const GreyImage& image) {
    return static_cast<std::int64_t>(image.width()) * image.height();
}

bool isSure(const Segmentation& found) {
    return !found.glyphs.empty() && found.likeness >= kSurelyPrint;
}

double worthOf(const Scene& scene) {
    double sum = 0;
    for (const ScenePart& part : scene.parts) sum += worthOf(part.found);
    return sum;
}

Scene sceneOf(ScenePart whole, Segmentation found) {
    const GreyImage& image = whole.seen();
    whole.whole = {0, 0, image.width(), image.height()};
    whole.found = std::move(found);
    leaveOutOtherThings(whole, image);
    Scene scene;
    scene.parts.push_back(std::move(whole));
    return scene;
}

Scene wholeScene(std::shared_ptr<const GreyImage> image, Segmentation found) {
    ScenePart whole;
    whole.picture = std::move(image);
    return sceneOf(std::move(whole), std::move(found));
}

Scene wholeScene(std::shared_ptr<const GreyImage> image, PrintAlone alone) {
    ScenePart whole;
    whole.picture = std::move(alone.picture);
    whole.original = std::move(image);
    whole.isDarkThere = alone.isDark;
    return sceneOf(std::move(whole), std::move(alone.found));
}

// In a region print is looked for even where there are no lines of it.
enum class Extent { Whole, Region };

TextLines linesOf(const GreyImage& image, const PrintSettings& print, const std::stop_token& stop) {
    TextLines found = findTextLines(image, stop);
    for (std::vector<TextLine>* lines : {&found.lines, &found.others})
        std::erase_if(*lines, [&](const TextLine& line) {
            return !print.allows(line.dark) ||
                   line.height() < kLowestLine * static_cast<float>(print.smallestHeight);
        });
    return found;
}

// What a picture with these lines shows whose whole is not clear, if it was `seen`, or is large.
Scene findByLine(std::shared_ptr<const GreyImage> image, const TextLines& found,
                 std::optional<Segmentation> seen, Extent extent, const PrintSettings& print,
                 const std::stop_token& stop) {
    const auto see = [&] { seen = segment(*image, takeWholeCharacters, stop, print); };
    const std::vector<TextLine>& lines = found.lines;
    if (!lines.empty() && !seen && mayFill(*image, lines)) {
        see();
        if (isSure(*seen)) return wholeScene(std::move(image), *std::move(seen));
    }
    if (!seen && areCloseRows(lines)) {
        Segmentation large = segment(*image, takeWholeCharacters, stop, print);
        if (isSure(large) && typicalHeight(large) * large.ink.scale > kMuchHigher * highest(lines))
            return wholeScene(std::move(image), std::move(large));
    }
    Scene byLine = lineByLine(*image, found, print, stop);
    const bool isNothing = byLine.parts.empty();
    if (!seen && isNothing &&
        (pixelsOf(*image) <= (lines.empty() ? kMostWithoutLines : kMostWithoutPrint) ||
         extent == Extent::Region))
        see();
    if (!seen) return byLine;
    const bool isWhole =
        isAll(*image, *seen, lines, byLine) || (isNothing && (lines.empty() || isSure(*seen)));
    return isWhole ? wholeScene(std::move(image), *std::move(seen)) : byLine;
}

// As findScene() without a region. What a picture leaves in doubt is looked for in its print alone; what
// both show, or what fills a small picture, is not looked for line by line.
Scene findIn(const std::shared_ptr<const GreyImage>& image, Extent extent, const PrintSettings& print,
             const std::stop_token& stop) {
    std::optional<Segmentation> seen;
    SecondOpinion opinion;
    std::optional<PrintAlone>& alone = opinion.likelier;
    const auto likelier = [&]() -> const Segmentation& { return alone ? alone->found : *seen; };
    const auto whole = [&] {
        return alone ? wholeScene(image, *std::move(alone)) : wholeScene(image, *std::move(seen));
    };
    const bool isSmall = pixelsOf(*image) <= kSmall;
    if (isSmall) {
        seen = segment(*image, takeWholeCharacters, stop, print);
        if (isSure(*seen)) return whole();
        opinion = findInPrintAlone(*image, seen->glyphs.size(), worthOf(*seen), print, stop);
        if (alone && isSure(alone->found) && alone->found.glyphs.size() >= kSomePrint) return whole();
        // Few characters that fill a picture, and some unlikely ones, are rather things on the part than
        // print.
        const std::size_t few = printOdds(likelier()) > kPerhapsPrint ? kSomePrint : 2 * kSomePrint;
        if (likelier().glyphs.size() > few && isFilled(*image, likelier())) return whole();
    }
    const TextLines found = linesOf(*image, print, stop);
    if (opinion.isAgreed && isOnLines(likelier(), found.lines)) return whole();
    Scene scene = findByLine(image, found, std::move(seen), extent, print, stop);
    if (!scene.parts.empty() && std::all_of(scene.parts.begin(), scene.parts.end(),
                                            [](const ScenePart& part) { return isSure(part.found); }))
        return scene;
    if (!isSmall && (pixelsOf(*image) <= kMostInDoubt || scene.parts.empty()))
        alone = findInPrintAlone(*image, scene.characters(), worthOf(scene), print, stop).likelier;
    return alone && alone->worth > worthOf(scene) ? whole() : scene;
}

// Makes a part of what a region shows a part of the whole picture.
void placeInWhole(ScenePart& part, const RotatedBox& region, const GreyImage& whole) {
    const float width = static_cast<float>(part.whole.right), height = static_cast<float>(part.whole.bottom);
    const RotatedBox::Point corner = region.toImage({part.left - 0.5f * width, part.top - 0.5f * height});
    part.left = corner.x;
    part.top = corner.y;
    part.angle += region.angle * std::numbers::pi_v<float> / 180;
    part.whole = {0, 0, whole.width(), whole.height()};
}

}  // namespace

Region ScenePart::place(const Region& own) const {
    if (angle == 0 && left == 0 && top == 0) return own;
    const float c = std::cos(angle), s = std::sin(angle);
    float x0 = 1e9f, y0 = 1e9f, x1 = -1e9f, y1 = -1e9f;
    for (const int x : {own.left, own.right})
        for (const int y : {own.top, own.bottom}) {
            const float u = left + static_cast<float>(x) * c - static_cast<float>(y) * s;
            const float v = top + static_cast<float>(x) * s + static_cast<float>(y) * c;
            x0 = std::min(x0, u);
            x1 = std::max(x1, u);
            y0 = std::min(y0, v);
            y1 = std::max(y1, v);
        }
    const auto within = [](float value, int most) {
        return std::clamp(static_cast<int>(std::lround(value)), 0, most);
    };
    return {within(x0, whole.right), within(y0, whole.bottom), within(x1, whole.right),
            within(y1, whole.bottom)};
}

RotatedBox ScenePart::box(const Region& own) const {
    const float c = std::cos(angle), s = std::sin(angle);
    const float x = 0.5f * static_cast<float>(own.left + own.right),
                y = 0.5f * static_cast<float>(own.top + own.bottom);
    return {left + x * c - y * s, top + x * s + y * c, static_cast<float>(own.width()),
            static_cast<float>(own.height()), angle * 180 / std::numbers::pi_v<float>};
}

std::size_t Scene::characters() const noexcept {
    std::size_t count = 0;
    for (const ScenePart& part : parts) count += part.found.glyphs.size();
    return count;
}

void tellOfNeighbours(Scene& scene) {
    std::vector<std::size_t> own;
    for (const ScenePart& part : scene.parts) own.push_back(part.found.lines.size());
    for (ScenePart& part : scene.parts)
        for (std::size_t i = 0; i < scene.parts.size(); ++i) {
            const ScenePart& other = scene.parts[i];
            if (&other == &part || std::abs(other.angle - part.angle) > kParallel) continue;
            for (std::size_t line = 0; line < own[i]; ++line) {
                LineMetrics beside = other.found.lines[line];
                beside.capHeight *= other.found.ink.scale / part.found.ink.scale;
                part.found.lines.push_back(beside);
            }
        }
}

Scene findScene(const std::shared_ptr<const GreyImage>& image, const SegmentationSettings& settings,
                const std::stop_token& stop) {
    if (!settings.region || image->empty()) return findIn(image, Extent::Whole, settings.print, stop);
    const RotatedBox& region = *settings.region;
    const auto upright = std::make_shared<GreyImage>(uprightPicture(*image, region));
    Scene scene = findIn(upright, Extent::Region, settings.print, stop);
    for (ScenePart& part : scene.parts) placeInWhole(part, region, *image);
    return scene;
}

}  // namespace dravik::engine
