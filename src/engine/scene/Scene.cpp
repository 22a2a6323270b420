#include "engine/scene/Scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <utility>

#include "engine/segmentation/TextLikeness.h"

namespace dravik::engine {
namespace {

// Around a line of print, in parts of the print's height.
constexpr float kBeside = 0.15f, kAbove = 0.4f, kBelow = 0.45f;
// Empty room around all that.
constexpr float kRoom = 0.5f;

// Log odds from which characters are taken as they are seen in the whole picture, whatever else there may be;
// from which they are where they fill it; and from which they are where they are all in the lines found.
constexpr double kSurelyPrint = 2.2, kLikelyPrint = 0.5, kPerhapsPrint = -1;
// Most room, in heights of its lines, around print that may be all that a picture shows.
constexpr float kBesidePrint = 6, kAbovePrint = 6.5f;
// Around characters that fill the picture.
constexpr float kMargin = 2;
// Of lines looked at alone: what is less likely is none where another is clear; what is found between and
// beside the lines must be this likely.
constexpr double kNoLine = -0.4, kClearLine = 1.5;
// A line that is less likely than this is cut where its characters are furthest apart, at least so far, in
// heights, as often as that makes it likelier by so much.
constexpr float kWideGap = 0.6f;
constexpr double kDoubtfulLine = 2.2, kBetterCut = 0.3;
constexpr int kMostCuts = 3;
// The contrast that another line has at least, as a part of that of the line beside it.
constexpr float kLeastContrast = 0.5f;
// Of the room between lines what is theirs, on each side, in heights.
constexpr float kClear = 0.45f;
// Between two lines there may be another one when they are so far apart, in heights.
constexpr float kLeastRoom = 1.55f, kMostRoom = 4;
// Lines that slope more are read better one by one.
constexpr float kUpright = 0.12f;  // radians
constexpr float kSameAngle = 0.1f;
// The whole of a picture of so few pixels is looked at before any line is searched in it; that of one without
// lines when it has at most so many.
constexpr std::int64_t kSmall = 150'000, kMostWithoutLines = 500'000;

// The background beyond a row or a column of pixels: what is least like print nearby.
std::vector<float> background(std::span<const float> edge, int reach, bool dark) {
    std::vector<float> result(edge.size());
    const int count = static_cast<int>(edge.size());
    for (int i = 0; i < count; ++i) {
        float best = edge[static_cast<std::size_t>(i)];
        for (int k = std::max(0, i - reach); k <= std::min(count - 1, i + reach); ++k) {
            const float level = edge[static_cast<std::size_t>(k)];
            best = dark ? std::max(best, level) : std::min(best, level);
        }
        result[static_cast<std::size_t>(i)] = best;
    }
    return result;
}

// The line upright, with nothing but background around it. Its print is `height` high.
ScenePart uprightLine(const GreyImage& image, const TextLine& line, float height) {
    const int room = static_cast<int>(std::lround(kRoom * height));
    const int inWidth = static_cast<int>(std::lround(line.right - line.left + 2 * kBeside * height));
    const int inHeight = static_cast<int>(std::lround(line.height() + (kAbove + kBelow) * height));
    const float c = std::cos(line.angle), s = std::sin(line.angle);
    const float along = line.left - kBeside * height, across = line.top - kAbove * height;
    auto picture = std::make_shared<GreyImage>(inWidth + 2 * room, inHeight + 2 * room);
    std::vector<float> first(static_cast<std::size_t>(inWidth)), last(first.size());
    for (int y = 0; y < inHeight; ++y) {
        const std::span<std::uint8_t> row = picture->row(y + room);
        for (int x = 0; x < inWidth; ++x) {
            const float a = along + static_cast<float>(x) + 0.5f, b = across + static_cast<float>(y) + 0.5f;
            const float level = image.levelAt(a * c - b * s, a * s + b * c);
            row[static_cast<std::size_t>(x + room)] = static_cast<std::uint8_t>(level + 0.5f);
            if (y == 0) first[static_cast<std::size_t>(x)] = level;
            if (y == inHeight - 1) last[static_cast<std::size_t>(x)] = level;
        }
    }
    const int reach = static_cast<int>(height);
    const std::vector<float> above = background(first, reach, line.dark),
                             below = background(last, reach, line.dark);
    for (int y = 0; y < room; ++y)
        for (int x = 0; x < inWidth; ++x) {
            const std::size_t column = static_cast<std::size_t>(x);
            picture->row(y)[column + static_cast<std::size_t>(room)] =
                static_cast<std::uint8_t>(above[column]);
            picture->row(room + inHeight + y)[column + static_cast<std::size_t>(room)] =
                static_cast<std::uint8_t>(below[column]);
        }
    std::vector<float> left, right;
    for (int y = 0; y < picture->height(); ++y) {
        left.push_back((*picture)(room, y));
        right.push_back((*picture)(room + inWidth - 1, y));
    }
    const std::vector<float> before = background(left, reach, line.dark),
                             behind = background(right, reach, line.dark);
    for (int y = 0; y < picture->height(); ++y)
        for (int x = 0; x < room; ++x) {
            (*picture)(x, y) = static_cast<std::uint8_t>(before[static_cast<std::size_t>(y)]);
            (*picture)(room + inWidth + x, y) =
                static_cast<std::uint8_t>(behind[static_cast<std::size_t>(y)]);
        }
    ScenePart part;
    part.whole = {0, 0, image.width(), image.height()};
    part.angle = line.angle;
    const float a = along - static_cast<float>(room), b = across - static_cast<float>(room);
    part.left = a * c - b * s;
    part.top = a * s + b * c;
    part.picture = std::move(picture);
    return part;
}

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
    if (!agrees.everyLineSeen) return false;
    const bool upright = std::all_of(lines.begin(), lines.end(),
                                     [](const TextLine& line) { return std::abs(line.angle) < kUpright; });
    if (upright && agrees.nothingBeside && seen.likeness > kPerhapsPrint) return true;
    return seen.glyphs.size() > byLine.characters() && seen.likeness > kLikelyPrint &&
           agrees.margins.beside < kMargin && agrees.margins.above < kMargin;
}

Scene wholeScene(std::shared_ptr<const GreyImage> image, Segmentation found) {
    Scene scene;
    ScenePart& whole = scene.parts.emplace_back();
    whole.whole = {0, 0, image->width(), image->height()};
    whole.picture = std::move(image);
    whole.found = std::move(found);
    return scene;
}

// Gives each part the lines of the others too: how high they are tells its capitals from small letters.
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

// Between nearly the darkest and nearly the lightest pixels.
float contrast(const GreyImage& picture) {
    std::array<int, 256> counts{};
    for (int y = 0; y < picture.height(); ++y)
        for (const std::uint8_t level : picture.row(y)) ++counts[level];
    const int few = picture.width() * picture.height() / 100;
    std::size_t low = 0, high = 255;
    for (int sum = counts[low]; sum <= few && low < 255; sum += counts[low]) ++low;
    for (int sum = counts[high]; sum <= few && high > low; sum += counts[high]) --high;
    return static_cast<float>(high - low);
}

// Looks at lines one by one, and at the room between them.
class LineByLine {
  public:
    LineByLine(const GreyImage& image, std::span<const TextLine> lines, const std::stop_token& stop)
        : image_(image), stop_(stop) {
        for (const TextLine& line : lines) seen_.push_back(look(line, line.height()));
        const bool clear = std::any_of(seen_.begin(), seen_.end(), isClear);
        std::erase_if(seen_, [&](const SeenLine& one) {
            return one.part.found.glyphs.empty() || (clear && one.part.found.glyphs.size() < 2) ||
                   one.part.found.likeness < (clear ? kNoLine : kPerhapsPrint);
        });
        lookBetween();
    }

    Scene scene() && {
        Scene scene;
        int number = 0;
        for (SeenLine& one : seen_) {
            one.part.firstLine = number;
            number += static_cast<int>(one.part.found.lines.size());
            scene.parts.push_back(std::move(one.part));
        }
        tellOfNeighbours(scene);
        return scene;
    }

  private:
    struct SeenLine {
        TextLine line;
        ScenePart part;
    };

    static bool isClear(const SeenLine& one) {
        return one.part.found.glyphs.size() > 1 && one.part.found.likeness > kClearLine;
    }

    SeenLine lookOnce(const TextLine& line, float height) const {
        SeenLine result{line, uprightLine(image_, line, height)};
        result.part.found = segment(*result.part.picture, stop_);
        return result;
    }

    // What stands at the end of a line, far from the rest, may be a part of a code or of a hole.
    SeenLine look(const TextLine& line, float height) const {
        SeenLine result = lookOnce(line, height);
        for (int cuts = 0; cuts < kMostCuts; ++cuts) {
            const Segmentation& found = result.part.found;
            if (found.glyphs.size() < 3 || found.lines.size() > 1 || found.likeness > kDoubtfulLine) break;
            const float room = kRoom * height + kBeside * height;
            float widest = kWideGap * height, left = 0, right = 0;
            float end = static_cast<float>(found.place(found.glyphs.front()).right);
            for (const Glyph& glyph : found.glyphs) {
                const Region place = found.place(glyph);
                if (const float gap = static_cast<float>(place.left) - end; gap > widest) {
                    widest = gap;
                    left = end;
                    right = static_cast<float>(place.left);
                }
                end = std::max(end, static_cast<float>(place.right));
            }
            if (right == 0) break;
            TextLine shorter = result.line;
            const float from = shorter.left - room;
            if (from + left - shorter.left > shorter.right - from - right)
                shorter.right = from + left;
            else
                shorter.left = from + right;
            SeenLine cut = lookOnce(shorter, height);
            if (cut.part.found.glyphs.empty() ||
                cut.part.found.likeness < result.part.found.likeness + kBetterCut)
                break;
            result = std::move(cut);
        }
        return result;
    }

    // Between lines that were found there are sometimes some that were not.
    void lookBetween() {
        std::vector<SeenLine> more;
        for (std::size_t i = 0; i < seen_.size(); ++i) {
            const TextLine& line = seen_[i].line;
            if (!isClear(seen_[i])) continue;
            const float height = line.height();
            const TextLine* below = nullptr;
            for (const SeenLine& one : seen_) {
                const TextLine& other = one.line;
                if (std::abs(other.angle - line.angle) > kSameAngle || other.right < line.left ||
                    other.left > line.right)
                    continue;
                if (other.top > line.bottom && (!below || other.top < below->top)) below = &other;
            }
            if (!below || below->top - line.bottom < kLeastRoom * height ||
                below->top - line.bottom > kMostRoom * height)
                continue;
            TextLine between = line;
            between.top = line.bottom + kClear * height;
            between.bottom = below->top - kClear * height;
            between.left = std::min(line.left, below->left);
            between.right = std::max(line.right, below->right);
            SeenLine found{between, uprightLine(image_, between, height)};
            if (contrast(*found.part.picture) < kLeastContrast * contrast(*seen_[i].part.picture)) continue;
            found.part.found = segment(*found.part.picture, stop_);
            const float typical = typicalHeight(found.part.found) * found.part.found.ink.scale;
            if (isClear(found) && typical > 0.6f * height && typical < 1.6f * height)
                more.push_back(std::move(found));
        }
        for (SeenLine& one : more) seen_.push_back(std::move(one));
        std::stable_sort(seen_.begin(), seen_.end(), [](const SeenLine& a, const SeenLine& b) {
            const float middle = 0.5f * (a.line.top + a.line.bottom),
                        other = 0.5f * (b.line.top + b.line.bottom);
            return std::abs(middle - other) < 0.4f * std::min(a.line.height(), b.line.height())
                       ? a.line.left < b.line.left
                       : middle < other;
        });
    }

    const GreyImage& image_;
    const std::stop_token& stop_;
    std::vector<SeenLine> seen_;
};

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

std::size_t Scene::characters() const noexcept {
    std::size_t count = 0;
    for (const ScenePart& part : parts) count += part.found.glyphs.size();
    return count;
}

Scene findScene(std::shared_ptr<const GreyImage> image, const std::stop_token& stop) {
    const std::int64_t pixels = static_cast<std::int64_t>(image->width()) * image->height();
    std::optional<Segmentation> seen;
    const auto isClear = [&] {
        seen = segment(*image, stop);
        return !seen->glyphs.empty() && seen->likeness >= kSurelyPrint;
    };
    if (pixels <= kSmall && isClear()) return wholeScene(std::move(image), *std::move(seen));
    const std::vector<TextLine> lines = findTextLines(*image, stop);
    if (lines.empty()) {
        if (!seen && pixels <= kMostWithoutLines) seen = segment(*image, stop);
        return seen ? wholeScene(std::move(image), *std::move(seen)) : Scene{};
    }
    if (!seen && mayFill(*image, lines) && isClear()) return wholeScene(std::move(image), *std::move(seen));
    Scene byLine = LineByLine(*image, lines, stop).scene();
    return seen && isAll(*image, *seen, lines, byLine) ? wholeScene(std::move(image), *std::move(seen))
                                                       : byLine;
}

}  // namespace dravik::engine
