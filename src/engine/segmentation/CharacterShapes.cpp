#include "engine/segmentation/CharacterShapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engine/image/Median.h"
#include "engine/segmentation/Features.h"
#include "engine/segmentation/PrintCleaning.h"

namespace dravik::engine {
namespace {

constexpr float kMostRoom = 1.5f, kMostWidth = 3, kMostWidthBeside = 2;
// A character of which there is more doubt than usual counts against those that have it, others for them.
constexpr double kUsualDoubt = 0.2;
// No character is surer than that.
constexpr double kMostOdds = 15;

struct Usual {
    float width = 0, room = 0, stroke = 0;  // medians, as parts of the height of capitals
};

const LineMetrics& lineOf(const Segmentation& found, const Glyph& glyph) {
    return found.lines[static_cast<std::size_t>(glyph.line)];
}

Usual usual(const Segmentation& found) {
    std::vector<float> widths, rooms, strokes;
    for (std::size_t i = 0; i < found.glyphs.size(); ++i) {
        const Glyph& glyph = found.glyphs[i];
        const float cap = lineOf(found, glyph).capHeight;
        widths.push_back(glyph.piece.box.width() / cap);
        strokes.push_back(strokeWidth(glyph.piece, found.ink) / cap);
        if (i + 1 < found.glyphs.size() && found.glyphs[i + 1].line == glyph.line)
            rooms.push_back((found.glyphs[i + 1].piece.box.left - glyph.piece.box.right) / cap);
    }
    return {median(widths), median(rooms), median(strokes)};
}

}  // namespace

std::vector<ShapeTraits> shapeTraits(const Segmentation& found) {
    std::vector<ShapeTraits> result;
    const Usual all = usual(found);
    for (std::size_t i = 0; i < found.glyphs.size(); ++i) {
        const Glyph& glyph = found.glyphs[i];
        const LineMetrics& line = lineOf(found, glyph);
        const Box& box = glyph.piece.box;
        const float cap = line.capHeight;
        // Room to a neighbour and its width.
        const auto beside = [&](std::size_t other) {
            if (other >= found.glyphs.size() || found.glyphs[other].line != glyph.line)
                return std::pair(kMostRoom, 0.0f);
            const Box& near = found.glyphs[other].piece.box;
            const float room = std::max(box.left, near.left) - std::min(box.right, near.right);
            return std::pair(std::clamp(room / cap, -1.0f, kMostRoom),
                             std::min(kMostWidthBeside, near.width() / cap));
        };
        const auto [leftRoom, leftWidth] = beside(i - 1);
        const auto [rightRoom, rightWidth] = beside(i + 1);
        const SampleInputs inputs = glyphInputs(found, glyph, line);
        ShapeTraits& traits = result.emplace_back();
        const auto rest = std::copy(inputs.begin(), inputs.end(), traits.begin());
        const std::array more = {std::min(kMostWidth, box.width() / cap),
                                 static_cast<float>(glyph.piece.area) / (box.width() * box.height()),
                                 leftRoom,
                                 leftWidth,
                                 rightRoom,
                                 rightWidth,
                                 all.width,
                                 all.room,
                                 all.stroke,
                                 found.look.joins == Look::Dots ? 1.0f : 0.0f,
                                 found.look.blur / static_cast<float>(found.look.side)};
        static_assert(kInputCount + more.size() == kShapeTraits);
        std::copy(more.begin(), more.end(), rest);
    }
    return result;
}

double shapeEvidence(const Segmentation& found) {
    double sum = 0;
    for (const ShapeTraits& traits : shapeTraits(found))
        sum +=
            kUsualDoubt - std::log1p(std::exp(-std::clamp(kWholeCharacter(traits), -kMostOdds, kMostOdds)));
    return sum;
}

}  // namespace dravik::engine
