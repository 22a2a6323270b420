#include "engine/scene/GivenCharacters.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <optional>
#include <utility>

#include "engine/scene/PartInk.h"

namespace dravik::engine {
namespace {

// Heights of capitals, in working pixels, at which characters are best told apart; print lower than this part
// of it is enlarged where it takes no more than so many image pixels.
constexpr float kBestHeight = 32, kSmallPart = 0.6f;
constexpr std::int64_t kMostDoubled = 310'000;
// Around the boxes of a line that is looked at alone, in heights.
constexpr float kMargin = 1;
// A found line whose characters are so much higher or lower than the boxes was not seen as print.
constexpr float kMostHigher = 1.7f;
constexpr float kSameAngle = 2;  // degrees
// A cut may be so far from the middle of the box, as a part of its width; at its furthest it is as bad as one
// in the middle through so much more ink, as a part of what the columns differ in. Around the box there is
// paper, so wide in heights.
constexpr float kCutRange = 0.3f, kFromMiddle = 0.25f, kPaper = 0.15f;

// A character that was found.
struct FoundGlyph {
    RotatedBox box;
    const ScenePart* part = nullptr;
    const Glyph* glyph = nullptr;
};

std::vector<FoundGlyph> foundGlyphs(const Scene& scene) {
    std::vector<FoundGlyph> all;
    for (const ScenePart& part : scene.parts)
        for (const Glyph& glyph : part.found.glyphs)
            all.push_back({part.box(part.found.place(glyph)), &part, &glyph});
    return all;
}

RotatedBox grown(RotatedBox box, float margin) {
    box.width += 2 * margin;
    box.height += 2 * margin;
    return box;
}

double meanLevel(const GreyImage& picture) {
    double sum = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (const std::uint8_t level : picture.row(y)) sum += level;
    return sum / (static_cast<double>(picture.width()) * picture.height());
}

float medianHeight(std::span<const CharacterBox> boxes) {
    std::vector<float> heights;
    for (const CharacterBox& box : boxes) heights.push_back(box.place.height);
    const auto middle = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2);
    std::nth_element(heights.begin(), middle, heights.end());
    return std::max(1.0f, *middle);
}

// Builds the scene line by line.
class Correction {
  public:
    Correction(const GreyImage& image, const Scene& found, const PrintSettings& print)
        : image_(image), found_(found), glyphs_(foundGlyphs(found)), print_(print) {}

    void addLine(std::span<const CharacterBox> boxes) {
        const std::vector<const FoundGlyph*> kept = keptOf(boxes);
        const ScenePart* home = homeOf(boxes, kept);
        ScenePart part = home ? *home : lookedAtAlone(boxes);
        Segmentation& seen = part.found;
        const std::optional<LineMetrics> metrics =
            home ? std::optional(lineOf(*home, boxes, kept)) : std::nullopt;
        seen.glyphs.clear();
        seen.lines.clear();
        seen.others.clear();
        PartInk ink(part);
        for (const FoundGlyph* one : kept)
            if (one && one->part == home) ink.take(one->glyph->piece);
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            Glyph& glyph = seen.glyphs.emplace_back();
            if (kept[i] && kept[i]->part == home) {
                glyph.piece = kept[i]->glyph->piece;
            } else {
                glyph.piece = ink.pieceIn(boxes[i].place);
                glyph.piece.measure(seen.frame);
            }
        }
        const bool isAsFound = metrics && std::find(kept.begin(), kept.end(), nullptr) == kept.end();
        seen.lines.push_back(isAsFound ? *metrics : measured(seen, metrics));
        part.firstLine = static_cast<int>(scene_.parts.size());
        scene_.parts.push_back(std::move(part));
    }

    Scene scene() && {
        tellOfNeighbours(scene_);
        return std::move(scene_);
    }

  private:
    // The found characters that stay as they are; null for boxes that are others.
    std::vector<const FoundGlyph*> keptOf(std::span<const CharacterBox> boxes) const {
        std::vector<const FoundGlyph*> kept;
        for (const CharacterBox& box : boxes) {
            const auto same = std::find_if(glyphs_.begin(), glyphs_.end(),
                                           [&](const FoundGlyph& one) { return one.box == box.place; });
            kept.push_back(same == glyphs_.end() ? nullptr : &*same);
        }
        return kept;
    }

    // The part in which the line is to be looked at as before; null when there is none.
    const ScenePart* homeOf(std::span<const CharacterBox> boxes,
                            std::span<const FoundGlyph* const> kept) const {
        for (const FoundGlyph* one : kept)
            if (one) return allShown(*one->part, boxes) ? one->part : nullptr;
        const float height = medianHeight(boxes);
        for (const FoundGlyph& one : glyphs_) {
            const bool near = std::any_of(boxes.begin(), boxes.end(), [&](const CharacterBox& box) {
                return std::abs(box.place.angle - one.box.angle) < kSameAngle &&
                       (one.box.contains({box.place.centreX, box.place.centreY}) ||
                        box.place.contains({one.box.centreX, one.box.centreY}));
            });
            if (!near) continue;
            const LineMetrics& line = one.part->found.lines[static_cast<std::size_t>(one.glyph->line)];
            const float share = line.capHeight * one.part->found.ink.scale / height;
            if (share < kMostHigher && share > 1 / kMostHigher && allShown(*one.part, boxes)) return one.part;
        }
        return nullptr;
    }

    static bool allShown(const ScenePart& part, std::span<const CharacterBox> boxes) {
        ScenePart same;
        same.angle = part.angle;
        same.left = part.left;
        same.top = part.top;
        const InkImage& ink = part.found.ink;
        same.found.ink = {ink.width, ink.height, ink.scale, ink.left, ink.top, {}};
        const PartInk shown(same);
        return std::all_of(boxes.begin(), boxes.end(),
                           [&](const CharacterBox& box) { return shown.shows(box.place); });
    }

    // Of the found line that the boxes are of.
    LineMetrics lineOf(const ScenePart& home, std::span<const CharacterBox> boxes,
                       std::span<const FoundGlyph* const> kept) const {
        for (const FoundGlyph* one : kept)
            if (one && one->part == &home)
                return home.found.lines[static_cast<std::size_t>(one->glyph->line)];
        const LineMetrics* nearest = &home.found.lines.front();
        float least = std::numeric_limits<float>::max();
        for (const FoundGlyph& one : glyphs_) {
            if (one.part != &home) continue;
            const float distance = std::hypot(one.box.centreX - boxes.front().place.centreX,
                                              one.box.centreY - boxes.front().place.centreY);
            if (distance >= least) continue;
            least = distance;
            nearest = &home.found.lines[static_cast<std::size_t>(one.glyph->line)];
        }
        return *nearest;
    }

    static LineMetrics measured(const Segmentation& seen, const std::optional<LineMetrics>& before) {
        std::vector<Piece> pieces;
        for (const Glyph& glyph : seen.glyphs) pieces.push_back({{}, glyph.piece.area, glyph.piece.box});
        const float height = before ? before->capHeight : std::max(1.0f, usualHeight(pieces));
        std::vector<Box> boxes, all;
        for (const Piece& piece : pieces) {
            all.push_back(piece.box);
            if (piece.box.height() >= 0.45f * height && piece.box.width() < 2 * height)
                boxes.push_back(piece.box);
        }
        return boxes.empty() && before ? *before : measureLine(boxes.empty() ? all : boxes, height);
    }

    // Where nothing like print was found: the surroundings of the boxes, upright.
    ScenePart lookedAtAlone(std::span<const CharacterBox> boxes) const {
        const RotatedBox& first = boxes.front().place;
        const float height = medianHeight(boxes);
        float left = 0, top = 0, right = 0, bottom = 0;
        for (const CharacterBox& box : boxes)
            for (const RotatedBox::Point corner : box.place.corners()) {
                const RotatedBox::Point own = first.toOwn(corner);
                left = std::min(left, own.x);
                right = std::max(right, own.x);
                top = std::min(top, own.y);
                bottom = std::max(bottom, own.y);
            }
        const RotatedBox::Point middle = first.toImage({0.5f * (left + right), 0.5f * (top + bottom)});
        const float room = 2 * kMargin * height;
        RotatedBox around{middle.x, middle.y, std::round(right - left + room),
                          std::round(bottom - top + room), first.angle};
        ScenePart part;
        part.picture = std::make_shared<GreyImage>(uprightPicture(image_, around));
        part.whole = {0, 0, image_.width(), image_.height()};
        part.angle = first.angle * std::numbers::pi_v<float> / 180;
        const int width = part.picture->width(), high = part.picture->height();
        const RotatedBox::Point corner =
            around.toImage({-0.5f * static_cast<float>(width), -0.5f * static_cast<float>(high)});
        part.left = corner.x;
        part.top = corner.y;

        float scale = std::max(1.0f, std::round(height / kBestHeight));
        while (static_cast<float>(std::max(width, high)) / scale > static_cast<float>(kMostInkSide)) ++scale;
        if (height < kSmallPart * kBestHeight && static_cast<std::int64_t>(width) * high <= kMostDoubled)
            scale = 0.5f;
        const Binarizer view(*part.picture, {0, 0, width, high}, scale);
        Look& look = part.found.look;
        look.dark = print_.polarity != Polarity::Automatic ? print_.allows(true)
                    : !found_.parts.empty()                ? found_.parts.front().isDark()
                                                           : view.leansDark();
        look.side = std::clamp(static_cast<int>(std::lround(0.75f * height / scale)), 8, 400);
        part.found.ink = view.separate(look.dark, look.side);
        return part;
    }

    const GreyImage& image_;
    const Scene& found_;
    const std::vector<FoundGlyph> glyphs_;
    const PrintSettings& print_;
    Scene scene_;
};

}  // namespace

std::vector<CharacterBox> characterBoxes(const Scene& scene) {
    std::vector<CharacterBox> boxes;
    for (const ScenePart& part : scene.parts)
        for (const Glyph& glyph : part.found.glyphs)
            boxes.push_back({part.box(part.found.place(glyph)), part.firstLine + glyph.line});
    return boxes;
}

Scene withCharacters(const GreyImage& image, const Scene& found, std::span<const CharacterBox> boxes,
                     const PrintSettings& print) {
    Correction correction(image, found, print);
    while (!boxes.empty()) {
        std::size_t count = 1;
        while (count < boxes.size() && boxes[count].line == boxes.front().line) ++count;
        correction.addLine(boxes.first(count));
        boxes = boxes.subspan(count);
    }
    return std::move(correction).scene();
}

float bestCut(const GreyImage& image, const RotatedBox& box) {
    const GreyImage picture = uprightPicture(image, box);
    const bool dark = meanLevel(picture) < meanLevel(uprightPicture(image, grown(box, kPaper * box.height)));
    std::vector<float> columns(static_cast<std::size_t>(picture.width()));
    for (int y = 0; y < picture.height(); ++y)
        for (std::size_t x = 0; x < columns.size(); ++x) {
            const float level = static_cast<float>(picture.row(y)[x]);
            columns[x] += dark ? 255 - level : level;
        }
    const auto [least, most] = std::minmax_element(columns.begin(), columns.end());
    const float range = std::max(1.0f, *most - *least), width = static_cast<float>(columns.size());
    float best = 0.5f * width, lowest = std::numeric_limits<float>::max();
    for (std::size_t x = 0; x < columns.size(); ++x) {
        const float place = static_cast<float>(x) + 0.5f, aside = std::abs(place / width - 0.5f);
        if (aside > kCutRange) continue;
        const float cost = (columns[x] - *least) / range + kFromMiddle * aside / kCutRange;
        if (cost >= lowest) continue;
        lowest = cost;
        best = place;
    }
    return std::clamp(best, 0.0f, box.width);
}

}  // namespace dravik::engine
