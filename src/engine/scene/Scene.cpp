#include "engine/scene/Scene.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <utility>

#include "engine/recogniser/BaseReader.h"
#include "engine/scene/LineByLine.h"
#include "engine/scene/PrintAlone.h"
#include "engine/segmentation/TextLikeness.h"

namespace dravik::engine {
namespace {

// Log odds from which characters are taken as they are seen in the whole picture, whatever else there may be.
constexpr double kSurelyPrint = 2.2;
// By so much, as a logarithm, characters that fill the picture may look less whole than line by line;
// measured on generated part images. Where the lines show less
// than half of them, they are all that there is when they look more whole by the second.
constexpr double kWholePicture = 1, kMuchMoreWhole = 8;
// Most room, in heights of its lines, around print that may be all that a picture shows.
constexpr float kBesidePrint = 6, kAbovePrint = 6.5f;
// Around characters that fill the picture.
constexpr float kMargin = 2;
// Lines that slope more are read better one by one.
constexpr float kUpright = 0.12f;  // radians
constexpr float kSameAngle = 0.1f;
// A line that is found is at least so high, in smallest heights that characters may have.
constexpr float kLowestLine = 0.75f;
// In doubt the print alone of pictures of so many pixels is looked at.
constexpr std::int64_t kMostInDoubt = 500'000;
// One or two characters of the print alone may be pieces of something else; lines of it are looked for.
constexpr std::size_t kSomePrint = 3;
// The whole of a picture of so few pixels is looked at before any line is searched in it; that of one without
// lines when it has at most so many.
constexpr std::int64_t kSmall = 150'000, kMostWithoutLines = 500'000;

// Most of the room on a side of a box within the picture, in heights of print.
struct Margins {
    float beside, above;
};

Margins marginsAround(const GreyImage& image, const Box& box, float height) {
    return {std::max(box.left, static_cast<float>(image.width()) - box.right) / height,
            std::max(box.top, static_cast<float>(image.height()) - box.bottom) / height};
}

// Whether the picture may show these lines and little else.
bool mayFill(const GreyImage& image, std::span<const TextLine> lines) {
    Box box{1e9f, 1e9f, 0, 0};
    float height = 0;
    for (const TextLine& line : lines) {
        if (std::abs(line.angle) > kUpright) return false;
        box.left = std::min(box.left, line.left);
        box.right = std::max(box.right, line.right);
        box.top = std::min(box.top, line.top);
        box.bottom = std::max(box.bottom, line.bottom);
        height = std::max(height, line.height());
    }
    const Margins margins = marginsAround(image, box, height);
    return margins.beside < kBesidePrint && margins.above < kAbovePrint;
}

bool isIn(const TextLine& line, float x, float y) {
    const float c = std::cos(line.angle), s = std::sin(line.angle), height = line.height();
    const float along = x * c + y * s, across = y * c - x * s;
    return along > line.left - 0.8f * height && along < line.right + 0.8f * height &&
           across > line.top - 0.3f * height && across < line.bottom + 0.45f * height;
}

// How the characters seen in the whole picture stand to the lines that were found in it.
struct Agreement {
    bool everyLineSeen = true;  // has two of the characters or more
    bool nothingBeside = true;  // no character is outside the lines
    Margins margins{};
};

Agreement agreement(const GreyImage& image, const Segmentation& seen, std::span<const TextLine> lines) {
    Agreement result;
    std::vector<int> counts(lines.size());
    Box box{1e9f, 1e9f, 0, 0};
    for (const Glyph& glyph : seen.glyphs) {
        const Region place = seen.place(glyph);
        const float left = static_cast<float>(place.left), right = static_cast<float>(place.right),
                    top = static_cast<float>(place.top), bottom = static_cast<float>(place.bottom);
        box = {std::min(box.left, left), std::min(box.top, top), std::max(box.right, right),
               std::max(box.bottom, bottom)};
        bool inLine = false;
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (isIn(lines[i], 0.5f * (left + right), 0.5f * (top + bottom))) {
                inLine = true;
                ++counts[i];
            }
        result.nothingBeside = result.nothingBeside && inLine;
    }
    result.everyLineSeen = std::all_of(counts.begin(), counts.end(), [](int count) { return count > 1; });
    result.margins = marginsAround(image, box, std::max(1.0f, typicalHeight(seen) * seen.ink.scale));
    return result;
}

// Whether what was seen in the whole picture is all that it shows, beside what its lines show one by one.
bool isAll(const GreyImage& image, const Segmentation& seen, std::span<const TextLine> lines,
           const Scene& byLine) {
    if (seen.glyphs.empty()) return false;
    const Agreement agrees = agreement(image, seen, lines);
    const auto odds = [&] {
        double sum = wholeCharacterOdds(seen) + kWholePicture;
        for (const ScenePart& part : byLine.parts) sum -= wholeCharacterOdds(part.found);
        return sum;
    };
    if (agrees.margins.beside < kMargin && agrees.margins.above < kMargin) return odds() > 0;
    return (agrees.everyLineSeen && agrees.nothingBeside && seen.likeness > kPerhapsPrint &&
            std::all_of(lines.begin(), lines.end(),
                        [](const TextLine& line) { return std::abs(line.angle) < kUpright; })) ||
           (2 * byLine.characters() < seen.glyphs.size() && odds() > kMuchMoreWhole);
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

Scene wholeScene(std::shared_ptr<const GreyImage> image, Segmentation found) {
    Scene scene;
    ScenePart& whole = scene.parts.emplace_back();
    whole.whole = {0, 0, image->width(), image->height()};
    whole.picture = std::move(image);
    whole.found = std::move(found);
    return scene;
}

Scene wholeScene(std::shared_ptr<const GreyImage> image, PrintAlone alone) {
    Scene scene = wholeScene(std::move(alone.picture), std::move(alone.found));
    scene.parts.front().original = std::move(image);
    scene.parts.front().isDarkThere = alone.isDark;
    return scene;
}

// In a region print is looked for even where there are no lines of it.
enum class Extent { Whole, Region };

// What a picture shows whose whole is not clear, if it was `seen`, or is large.
Scene findLines(std::shared_ptr<const GreyImage> image, std::optional<Segmentation> seen, Extent extent,
                const PrintSettings& print, const std::stop_token& stop) {
    std::vector<TextLine> lines = findTextLines(*image, stop);
    std::erase_if(lines, [&](const TextLine& line) {
        return !print.allows(line.dark) ||
               line.height() < kLowestLine * static_cast<float>(print.smallestHeight);
    });
    const auto see = [&] { seen = segment(*image, takeWholeCharacters, stop, print); };
    if (lines.empty()) {
        if (!seen && (pixelsOf(*image) <= kMostWithoutLines || extent == Extent::Region)) see();
        return seen ? wholeScene(std::move(image), *std::move(seen)) : Scene{};
    }
    if (!seen && mayFill(*image, lines)) {
        see();
        if (isSure(*seen)) return wholeScene(std::move(image), *std::move(seen));
    }
    Scene byLine = lineByLine(*image, lines, print, stop);
    return seen && isAll(*image, *seen, lines, byLine) ? wholeScene(std::move(image), *std::move(seen))
                                                       : byLine;
}

// As findScene() without a region. What a picture leaves in doubt is looked for in its print alone.
Scene findIn(const std::shared_ptr<const GreyImage>& image, Extent extent, const PrintSettings& print,
             const std::stop_token& stop) {
    std::optional<Segmentation> seen;
    std::optional<PrintAlone> alone;
    const bool isSmall = pixelsOf(*image) <= kSmall;
    if (isSmall) {
        seen = segment(*image, takeWholeCharacters, stop, print);
        if (isSure(*seen)) return wholeScene(image, *std::move(seen));
        alone = findInPrintAlone(*image, seen->glyphs.size(), worthOf(*seen), print, stop);
        if (alone && isSure(alone->found) && alone->found.glyphs.size() >= kSomePrint)
            return wholeScene(image, *std::move(alone));
    }
    Scene scene = findLines(image, std::move(seen), extent, print, stop);
    if (!scene.parts.empty() && std::all_of(scene.parts.begin(), scene.parts.end(),
                                            [](const ScenePart& part) { return isSure(part.found); }))
        return scene;
    if (!isSmall && pixelsOf(*image) <= kMostInDoubt)
        alone = findInPrintAlone(*image, scene.characters(), worthOf(scene), print, stop);
    return alone && alone->worth > worthOf(scene) ? wholeScene(image, *std::move(alone)) : scene;
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
            if (&other == &part || std::abs(other.angle - part.angle) > kSameAngle) continue;
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
