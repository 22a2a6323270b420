#include "engine/TextLikeness.h"

#include <algorithm>
#include <cmath>

#include "engine/PrintCleaning.h"

namespace dravik {
namespace {

constexpr std::size_t kManyGlyphs = 30;
constexpr double kLeastUsual = 0.3;
// The weights of the traits, fitted on generated part images so that of all candidates the one with the right
// number of characters comes first (bench/generate, set `develop`; multinomial logistic regression).
constexpr double kBias = -19.078;
constexpr TextTraits kWeights = {-1.189, -2.228, 7.409,  -0.414, 1.620,  1.191, 10.054, -5.667,
                                 0.813,  1.721,  -6.244, 3.438,  -0.368, 1.446, 1.620,  7.572};
constexpr std::array<double, 6> kQuadratic = {2.116, -0.730, -16.533, 2.259, 1.858, -0.001};

float median(std::vector<float>& values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Mean ink of a glyph, 128 to 255.
float strength(const Piece& piece, const InkImage& ink) {
    std::int64_t sum = 0;
    for (const Run& run : piece.runs)
        for (int x = run.x0; x < run.x1; ++x) sum += ink.at(x, run.y);
    return static_cast<float>(sum) / static_cast<float>(std::max(1, piece.area));
}

// How clear the upper and lower edges of the glyphs are, against those to the left and right. The gaps
// between the strokes of print, taken for print, have edges at their sides only: above and below they go on
// in the open.
class EdgeBalance {
  public:
    explicit EdgeBalance(const Binarizer& seen) : seen_(seen) {}

    void add(const Piece& piece, const InkImage& ink, int reach) {
        for (const Run& run : piece.runs) {
            if (run.x0 >= reach && run.x1 + reach < ink.width) {
                const int inside = seen_.level((run.x0 + run.x1) / 2, run.y);
                sides_ += std::abs(seen_.level(run.x0 - reach, run.y) - inside) +
                          std::abs(seen_.level(run.x1 + reach - 1, run.y) - inside);
                sideCount_ += 2;
            }
            for (const int step : {-1, 1}) {
                const int y = run.y + step * reach;
                if (y < 0 || y >= ink.height) continue;
                const int within = std::clamp(run.y - (step * (reach - 1)) / 2, 0, ink.height - 1);
                for (int x = run.x0; x < run.x1; ++x) {
                    if (ink.at(x, run.y + step) >= 128) continue;
                    ends_ += std::abs(seen_.level(x, y) - seen_.level(x, within));
                    ++endCount_;
                }
            }
        }
    }
    double share() const {
        if (sideCount_ == 0 || endCount_ == 0 || sides_ == 0) return 0.5;
        return (static_cast<double>(ends_) / static_cast<double>(endCount_)) /
               (static_cast<double>(sides_) / static_cast<double>(sideCount_));
    }

  private:
    const Binarizer& seen_;
    std::int64_t sides_ = 0, ends_ = 0, sideCount_ = 0, endCount_ = 0;
};

}  // namespace

float typicalHeight(const Segmentation& found) {
    std::vector<float> heights;
    for (const Glyph& glyph : found.glyphs)
        heights.push_back(found.lines[static_cast<std::size_t>(glyph.line)].capHeight);
    return median(heights);
}

double wholeness(const Segmentation& found) {
    double whole = 0;
    const std::vector<Glyph>& glyphs = found.glyphs;
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        const LineMetrics& line = found.lines[static_cast<std::size_t>(glyphs[i].line)];
        const float cap = line.capHeight;
        const Box& box = glyphs[i].piece.box;
        const bool stands = std::abs(box.bottom - line.baseline) < 0.12f * cap ||
                            std::abs(line.baseline - cap - box.top) < 0.12f * cap ||
                            std::abs(line.baseline - 0.73f * cap - box.top) < 0.1f * cap;
        if (box.width() > 1.35f * cap || box.height() > 1.5f * cap) continue;
        float room = cap;
        for (const std::size_t other : {i - 1, i + 1})
            if (other < glyphs.size() && glyphs[other].line == glyphs[i].line) {
                const Box& near = glyphs[other].piece.box;
                room = std::min(room, std::max(box.left, near.left) - std::min(box.right, near.right));
            }
        if (box.height() > 0.6f * cap)
            whole += stands ? 1 : 0.3;
        else
            whole += room > 0.08f * cap ? 0.9 : 0;
    }
    return glyphs.empty() ? 0 : whole / static_cast<double>(glyphs.size());
}

TextTraits textTraits(const Segmentation& found, const Binarizer& seen) {
    TextTraits traits{};
    if (found.glyphs.empty()) return traits;
    EdgeBalance edges(seen);
    std::vector<float> strokes, strengths, widths, rooms, contrasts;
    double usual = 0, all = 0, full = 0, tall = 0;
    const std::vector<Glyph>& glyphs = found.glyphs;
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        const LineMetrics& line = found.lines[static_cast<std::size_t>(glyphs[i].line)];
        const float cap = line.capHeight;
        const Piece& piece = glyphs[i].piece;
        const Box& box = piece.box;
        const float height = box.height() / cap, width = box.width() / cap;
        const float fill = static_cast<float>(piece.area) / (box.width() * box.height());
        const bool stands = std::abs(box.bottom - line.baseline) < 0.15f * cap ||
                            std::abs(line.baseline - cap - box.top) < 0.15f * cap;
        all += piece.area;
        if (i + 1 < glyphs.size() && glyphs[i + 1].line == glyphs[i].line)
            rooms.push_back((glyphs[i + 1].piece.box.left - box.right) / cap);
        if (height > 0.6f && stands) ++tall;
        if (!(height > 0.6f && height < 1.4f && width < 1.2f && stands && (fill < 0.75f || width < 0.35f)))
            continue;
        usual += piece.area;
        full += static_cast<double>(fill);
        if (strokes.size() >= 400) continue;
        const float stroke = strokeWidth(piece, found.ink);
        edges.add(piece, found.ink, std::max(2, static_cast<int>(0.6f * stroke + 0.5f)));
        strokes.push_back(stroke / cap);
        strengths.push_back(strength(piece, found.ink));
        widths.push_back(width);
    }
    const double count = static_cast<double>(glyphs.size());
    if (strokes.empty()) return traits;
    const double usualCount = static_cast<double>(strokes.size());
    const float stroke = median(strokes);
    double even = 0;
    for (const float one : strokes)
        even += std::clamp(1.5 - 2.0 * static_cast<double>(std::abs(one - stroke) / stroke), 0.0, 1.0);
    double narrow = 0, overlapping = 0;
    for (const float room : rooms) {
        narrow += room < 0.06f ? 1 : 0;
        overlapping += room < -0.05f ? 1 : 0;
    }
    const double pairs = static_cast<double>(rooms.size()) + 1;
    std::int64_t ink = 0;
    for (const std::uint8_t value : found.ink.ink) ink += value >= 128;
    traits = {usual / all,
              wholeness(found),
              even / usualCount,
              std::clamp((static_cast<double>(median(strengths)) - 128) / 100.0, 0.0, 1.0),
              std::clamp(edges.share(), 0.0, 1.2),
              count / (count + 3),
              count / (count + 2 * static_cast<double>(found.lines.size())),
              static_cast<double>(stroke),
              static_cast<double>(median(widths)),
              full / usualCount,
              narrow / pairs,
              overlapping / pairs,
              static_cast<double>(median(rooms)),
              all / static_cast<double>(std::max<std::int64_t>(1, ink)),
              tall / count,
              std::max(0.0, static_cast<double>(stroke) - 0.22)};
    return traits;
}

double textLikeness(const Segmentation& found, const Binarizer& seen) {
    if (found.glyphs.empty()) return kNoText;
    const TextTraits t = textTraits(found, seen);
    // Noise and texture give many pieces, of which by chance some are like characters.
    if (found.glyphs.size() > kManyGlyphs && t[0] < kLeastUsual) return kNoText;
    double sum = kBias;
    for (std::size_t i = 0; i < t.size(); ++i) sum += kWeights[i] * t[i];
    return sum + kQuadratic[0] * t[0] * t[1] + kQuadratic[1] * t[4] * t[4] + kQuadratic[2] * t[7] * t[7] +
           kQuadratic[3] * t[0] * t[0] + kQuadratic[4] * t[1] * t[1] + kQuadratic[5] * t[12] * t[12];
}

}  // namespace dravik
