#include "engine/segmentation/Features.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace dravik::engine {
namespace {

constexpr int kGrid = 7;
static_assert(kGrid * kGrid == tool::kFeatureCount);
// How far the grid's box goes from the line's box to the character's own.
constexpr float kOwnShare = 0.6f;
// Width of a usual character as a part of the height of capitals.
constexpr float kUsualWidth = 0.65f;
constexpr int kMostSteps = 12;

// The character's own ink in a small image, without that of its neighbours.
class OwnInk {
  public:
    OwnInk(const InkImage& image, const Piece& piece) {
        int right = 0, bottom = 0;
        left_ = image.width;
        top_ = image.height;
        for (const Run& run : piece.runs) {
            left_ = std::min<int>(left_, run.x0);
            right = std::max<int>(right, run.x1);
            top_ = std::min<int>(top_, run.y);
            bottom = std::max(bottom, run.y + 1);
        }
        left_ = std::max(0, left_ - 1);
        top_ = std::max(0, top_ - 1);
        width_ = std::min(image.width, right + 1) - left_;
        height_ = std::min(image.height, bottom + 1) - top_;
        values_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x)
                if (const std::uint8_t ink = image.at(left_ + x, top_ + y); ink < 128)
                    values_[index(x, y)] = static_cast<float>(ink) / 255;
        for (const Run& run : piece.runs)
            for (int x = run.x0; x < run.x1; ++x)
                values_[index(x - left_, run.y - top_)] = static_cast<float>(image.at(x, run.y)) / 255;
    }

    // The piece's box with each side where the ink crosses the half, between the outermost pixels that are
    // ink and those before them: a fraction of a pixel tells small letters from large ones.
    Box edges(Box box) const {
        std::vector<float> rows(static_cast<std::size_t>(height_)), columns(static_cast<std::size_t>(width_));
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x) {
                const float value = values_[index(x, y)];
                float& row = rows[static_cast<std::size_t>(y)];
                float& column = columns[static_cast<std::size_t>(x)];
                row = std::max(row, value);
                column = std::max(column, value);
            }
        box.top += inset(rows.begin(), rows.end());
        box.bottom -= inset(rows.rbegin(), rows.rend());
        box.left += inset(columns.begin(), columns.end());
        box.right -= inset(columns.rbegin(), columns.rend());
        return box;
    }

    // Ink at a point of the image, between its four pixels.
    float at(float x, float y) const {
        const float u = x - 0.5f - static_cast<float>(left_), v = y - 0.5f - static_cast<float>(top_);
        const float column = std::floor(u), row = std::floor(v);
        const int c = static_cast<int>(column), r = static_cast<int>(row);
        const float across = u - column, down = v - row;
        return (pixel(c, r) * (1 - across) + pixel(c + 1, r) * across) * (1 - down) +
               (pixel(c, r + 1) * (1 - across) + pixel(c + 1, r + 1) * across) * down;
    }

  private:
    // From the outer side of the first pixel that is ink to where the ink crosses the half, -0.5 to 0.5.
    template <typename Place>
    static float inset(Place first, Place last) {
        float before = 0;
        for (; first != last; before = *first++)
            if (*first >= 0.5f) return (0.5f - before) / (*first - before) - 0.5f;
        return 0;
    }

    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }
    float pixel(int x, int y) const {
        return x < 0 || y < 0 || x >= width_ || y >= height_ ? 0.0f : values_[index(x, y)];
    }

    int left_ = 0, top_ = 0, width_ = 0, height_ = 0;
    std::vector<float> values_;
};

Box gridBox(const Box& own, const LineMetrics& line) {
    Box box;
    const float lineTop = line.baseline - line.capHeight;
    box.top = std::min(own.top, kOwnShare * own.top + (1 - kOwnShare) * lineTop);
    box.bottom = std::max(own.bottom, kOwnShare * own.bottom + (1 - kOwnShare) * line.baseline);
    const float width =
        std::max(own.width(), kOwnShare * own.width() + (1 - kOwnShare) * kUsualWidth * line.capHeight);
    box.left = own.middleX() - 0.5f * width;
    box.right = own.middleX() + 0.5f * width;
    return box;
}

}  // namespace

SampleInputs glyphInputs(const Segmentation& found, const Glyph& glyph, const LineMetrics& line) {
    const OwnInk ink(found.ink, glyph.piece);
    const Box own = ink.edges(glyph.piece.box);
    const Box box = gridBox(own, line);
    const float cellWidth = box.width() / kGrid, cellHeight = box.height() / kGrid;
    const auto steps = [](float cell) { return std::clamp(static_cast<int>(2 * cell + 1), 3, kMostSteps); };
    const int across = steps(cellWidth), down = steps(cellHeight);
    const Frame& frame = found.frame;

    // A cell sees half a cell of its neighbours as well, with less weight, so that small shifts change
    // little.
    SampleInputs inputs{};
    for (int row = 0; row < kGrid; ++row)
        for (int column = 0; column < kGrid; ++column) {
            float sum = 0, weights = 0;
            for (int j = 0; j < down; ++j) {
                const float v = (static_cast<float>(j) + 0.5f) / static_cast<float>(down) * 2 - 1;
                const float y = box.top + cellHeight * (static_cast<float>(row) + 0.5f + v * 0.9f);
                for (int i = 0; i < across; ++i) {
                    const float u = (static_cast<float>(i) + 0.5f) / static_cast<float>(across) * 2 - 1;
                    const float x = box.left + cellWidth * (static_cast<float>(column) + 0.5f + u * 0.9f);
                    const float weight = (1 - std::abs(u)) * (1 - std::abs(v));
                    sum += weight * ink.at(frame.x(x, y), frame.y(x, y));
                    weights += weight;
                }
            }
            inputs[static_cast<std::size_t>(row * kGrid + column)] = sum / weights;
        }
    const float strongest = *std::max_element(inputs.begin(), inputs.begin() + tool::kFeatureCount);
    if (strongest > 0)
        for (std::size_t i = 0; i < tool::kFeatureCount; ++i)
            inputs[i] = std::min(1.0f, inputs[i] / strongest);
    inputs[kHeightInput] = std::clamp(own.height() / line.capHeight, 0.0f, 4.0f);
    inputs[kOffsetInput] = std::clamp((line.baseline - own.middleY()) / line.capHeight, -4.0f, 4.0f);
    return inputs;
}

}  // namespace dravik::engine
