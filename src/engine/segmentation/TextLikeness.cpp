#include "engine/segmentation/TextLikeness.h"

#include <algorithm>
#include <cmath>

#include "engine/image/Median.h"
#include "engine/segmentation/PrintCleaning.h"

namespace dravik::engine {
namespace {

constexpr std::size_t kManyGlyphs = 30, kManyMeasured = 400;
constexpr double kLeastUsual = 0.3;
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

    // Grey levels from the glyphs to what is beside them.
    double contrast() const {
        return sideCount_ ? static_cast<double>(sides_) / static_cast<double>(sideCount_) : 0;
    }

  private:
    const Binarizer& seen_;
    std::int64_t sides_ = 0, ends_ = 0, sideCount_ = 0, endCount_ = 0;
};

bool stands(const Box& box, const LineMetrics& line) {
    const float room = 0.15f * line.capHeight;
    return std::abs(box.bottom - line.baseline) < room ||
           std::abs(line.baseline - line.capHeight - box.top) < room;
}

// Of the size and shape that most characters have.
bool isUsual(const Piece& piece, const LineMetrics& line) {
    const Box& box = piece.box;
    const float height = box.height() / line.capHeight, width = box.width() / line.capHeight;
    const float fill = static_cast<float>(piece.area) / (box.width() * box.height());
    return height > 0.6f && height < 1.4f && width < 1.2f && stands(box, line) &&
           (fill < 0.75f || width < 0.35f);
}

bool touchesBorder(const Piece& piece, const InkImage& ink) {
    return std::any_of(piece.runs.begin(), piece.runs.end(), [&ink](const Run& run) {
        return run.x0 <= 0 || run.y <= 0 || run.x1 >= ink.width || run.y >= ink.height - 1;
    });
}

// Grey levels by which a glyph differs from what is above and below its line, in the direction in which print
// is looked for. The gaps between letters, taken for print, do not differ.
float rising(const Piece& piece, const LineMetrics& line, const Segmentation& found, const Binarizer& seen) {
    std::int64_t inside = 0, outside = 0, count = 0;
    for (const Run& run : piece.runs) inside += seen.level((run.x0 + run.x1) / 2, run.y);
    const float room = 0.22f * line.capHeight;
    for (const float across : {line.baseline - line.capHeight - room, line.baseline + room})
        for (const float share : {0.2f, 0.5f, 0.8f}) {
            const float along = piece.box.left + share * piece.box.width();
            const int x = static_cast<int>(found.frame.x(along, across)),
                      y = static_cast<int>(found.frame.y(along, across));
            if (x < 0 || y < 0 || x >= found.ink.width || y >= found.ink.height) continue;
            outside += seen.level(x, y);
            ++count;
        }
    if (count == 0 || piece.runs.empty()) return 0;
    const float rise = static_cast<float>(outside) / static_cast<float>(count) -
                       static_cast<float>(inside) / static_cast<float>(piece.runs.size());
    return found.look.dark ? rise : -rise;
}

// How alike the values are to their median, 0 to 1.
double alike(const std::vector<float>& values, float middle) {
    double sum = 0;
    for (const float one : values)
        sum += std::clamp(1.5 - 2.0 * static_cast<double>(std::abs(one - middle) / std::max(middle, 1e-3f)),
                          0.0, 1.0);
    return values.empty() ? 0 : sum / static_cast<double>(values.size());
}

}  // namespace

float typicalHeight(const Segmentation& found) {
    std::vector<float> heights;
    for (const Glyph& glyph : found.glyphs)
        heights.push_back(found.lines[static_cast<std::size_t>(glyph.line)].capHeight);
    return median(heights);
}

float usualGap(const Segmentation& found) {
    std::vector<float> gaps;
    for (std::size_t i = 1; i < found.glyphs.size(); ++i) {
        const Glyph &glyph = found.glyphs[i], &before = found.glyphs[i - 1];
        if (glyph.line == before.line)
            gaps.push_back(static_cast<float>(found.place(glyph).left - found.place(before).right));
    }
    return median(gaps);
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
    std::vector<float> strokes, strengths, widths, rooms, risings;
    double usual = 0, all = 0, full = 0, tall = 0, small = 0, cornered = 0;
    const std::vector<Glyph>& glyphs = found.glyphs;
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        const LineMetrics& line = found.lines[static_cast<std::size_t>(glyphs[i].line)];
        const float cap = line.capHeight;
        const Piece& piece = glyphs[i].piece;
        const Box& box = piece.box;
        all += piece.area;
        if (i + 1 < glyphs.size() && glyphs[i + 1].line == glyphs[i].line)
            rooms.push_back((glyphs[i + 1].piece.box.left - box.right) / cap);
        if (box.height() > 0.6f * cap && stands(box, line)) ++tall;
        if (box.height() < 0.45f * cap && box.width() < 0.45f * cap) ++small;
        cornered += touchesBorder(piece, found.ink) ? 1 : 0;
        if (!isUsual(piece, line)) continue;
        usual += piece.area;
        full += static_cast<double>(static_cast<float>(piece.area) / (box.width() * box.height()));
        if (strokes.size() >= kManyMeasured) continue;
        const float stroke = strokeWidth(piece, found.ink);
        edges.add(piece, found.ink, std::max(2, static_cast<int>(0.6f * stroke + 0.5f)));
        strokes.push_back(stroke / cap);
        strengths.push_back(strength(piece, found.ink));
        widths.push_back(box.width() / cap);
        risings.push_back(rising(piece, line, found, seen));
    }
    const double count = static_cast<double>(glyphs.size());
    if (strokes.empty()) return traits;
    const double usualCount = static_cast<double>(strokes.size());
    const float stroke = median(strokes), width = median(widths);
    double narrow = 0, overlapping = 0;
    for (const float room : rooms) {
        narrow += room < 0.06f ? 1 : 0;
        overlapping += room < -0.05f ? 1 : 0;
    }
    const double pairs = static_cast<double>(rooms.size()) + 1;
    const std::int64_t ink = found.ink.pixels();
    const double contrast = std::max(1.0, edges.contrast());
    const double height = static_cast<double>(typicalHeight(found));
    const Look& look = found.look;
    const auto& [cuts, joins, prints] = found.decisions;
    const auto share = [count](double wrong) { return std::min(1.0, wrong / count); };
    const auto some = [](double wrong) { return std::min(2.0, wrong); };
    traits = {
        // Shares of the ink in characters of usual shape, and of whole characters.
        usual / all, wholeness(found),
        // Evenness of the strokes, strength of the ink, clearness of upper and lower edges.
        alike(strokes, stroke), std::clamp((static_cast<double>(median(strengths)) - 128) / 100.0, 0.0, 1.0),
        std::clamp(edges.share(), 0.0, 1.2),
        // Number of characters, in all and by line.
        count / (count + 3), count / (count + 2 * static_cast<double>(found.lines.size())),
        // Widths of strokes and characters, how full their boxes are.
        static_cast<double>(stroke), static_cast<double>(width), full / usualCount,
        // Neighbours that are close or overlap, and the room between them.
        narrow / pairs, overlapping / pairs, std::clamp(static_cast<double>(median(rooms)), -1.0, 2.0),
        // Share of all ink that is in characters, share of high ones.
        all / static_cast<double>(std::max<std::int64_t>(1, ink)), tall / count,
        // Strokes beyond the usual.
        std::max(0.0, static_cast<double>(stroke) - 0.22),
        // How far the print stands out from what is above and below its lines.
        std::clamp(static_cast<double>(median(risings)) / contrast, -1.5, 1.5),
        // Cuts, joins and print that were in doubt.
        share(cuts.wronglyLeft), share(cuts.wronglyDone), some(cuts.wronglyLeft), some(cuts.wronglyDone),
        share(joins.wronglyLeft), share(joins.wronglyDone), some(joins.wronglyLeft), some(joins.wronglyDone),
        share(prints.wronglyLeft), share(prints.wronglyDone), some(prints.wronglyLeft),
        some(prints.wronglyDone),
        // Marks, what touches the border, noise.
        small / count, cornered / count, std::min(1.0, static_cast<double>(seen.noise()) / contrast),
        // Size, evenness of the widths.
        std::clamp(std::log2(height / 32), -3.0, 3.0), alike(widths, width),
        // How it was looked at.
        look.joins == Look::Fragments ? 1.0 : 0.0, look.joins == Look::Dots ? 1.0 : 0.0,
        10 * static_cast<double>(look.blur) / look.side, std::min(1.0, 20 / contrast)};
    return traits;
}

bool looksLikeText(const Segmentation& found) {
    double usual = 0, all = 0;
    for (const Glyph& glyph : found.glyphs) {
        all += glyph.piece.area;
        if (isUsual(glyph.piece, found.lines[static_cast<std::size_t>(glyph.line)]))
            usual += glyph.piece.area;
    }
    return !found.glyphs.empty() && (found.glyphs.size() <= kManyGlyphs || usual >= kLeastUsual * all);
}

}  // namespace dravik::engine
