#include "engine/segmentation/PrintCleaning.h"

#include <algorithm>
#include <cmath>

#include "engine/image/Median.h"

namespace dravik::engine {
namespace {

// Log odds of being print above which a piece that is left out may be print after all; so many of a line.
constexpr double kHardlyDirt = -1;
constexpr std::size_t kMostLeftOut = 8;

// Grey levels between a piece and what lies at its sides.
float contrast(const Piece& piece, const InkImage& ink, const Binarizer& seen, int reach) {
    std::int64_t sum = 0, count = 0;
    for (const Run& run : piece.runs) {
        const int inside = seen.level((run.x0 + run.x1) / 2, run.y);
        for (const int x : {run.x0 - reach, run.x1 + reach - 1})
            if (x >= 0 && x < ink.width && ink.at(x, run.y) < 128) {
                sum += std::abs(seen.level(x, run.y) - inside);
                ++count;
            }
    }
    return count ? static_cast<float>(sum) / static_cast<float>(count) : 0;
}

}  // namespace

float strokeWidth(const Piece& piece, const InkImage& ink) {
    int outline = 0;
    const auto isInk = [&](int x, int y) { return y >= 0 && y < ink.height && ink.at(x, y) >= 128; };
    for (const Run& run : piece.runs) {
        outline += 2;
        for (int x = run.x0; x < run.x1; ++x) outline += !isInk(x, run.y - 1) + !isInk(x, run.y + 1);
    }
    return 2 * static_cast<float>(piece.area) / static_cast<float>(std::max(1, outline));
}

namespace {

// Calls `visit(line, piece, traits)` for each piece of each line. Texture has thousands of them, of which the
// traits together would take much more room than the pieces.
template <typename Visit>
void forPrintTraits(const std::vector<LinePieces>& lines, const InkImage& ink, const Binarizer& seen,
                    const Look& look, Visit visit) {
    struct Measured {
        float contrast, stroke;
    };
    std::vector<std::vector<Measured>> measured;
    std::vector<float> contrasts, strokes, own;
    const auto isHigh = [](const Piece& piece, const LinePieces& line) {
        return piece.box.height() > 0.5f * line.metrics.capHeight;
    };
    for (const LinePieces& line : lines) {
        std::vector<Measured>& values = measured.emplace_back();
        for (const Piece& piece : line.pieces) {
            const float stroke = strokeWidth(piece, ink);
            values.push_back({contrast(piece, ink, seen, std::max(2, static_cast<int>(stroke))), stroke});
            if (!isHigh(piece, line)) continue;
            contrasts.push_back(values.back().contrast);
            strokes.push_back(stroke / line.metrics.capHeight);
        }
    }
    const float overall = std::max(1.0f, median(contrasts)), usualStroke = std::max(0.02f, median(strokes));
    for (std::size_t l = 0; l < lines.size(); ++l) {
        const LinePieces& line = lines[l];
        const float cap = line.metrics.capHeight;
        own.clear();
        for (std::size_t i = 0; i < line.pieces.size(); ++i)
            if (isHigh(line.pieces[i], line)) own.push_back(measured[l][i].contrast);
        const float usual = own.empty() ? overall : std::max(1.0f, median(own));
        // Room to the nearest characters that are no marks.
        std::vector<float> before(line.pieces.size(), 3 * cap), after = before;
        float edge = -1e9f;
        for (std::size_t i = 0; i < line.pieces.size(); ++i) {
            before[i] = line.pieces[i].box.left - edge;
            if (isHigh(line.pieces[i], line)) edge = std::max(edge, line.pieces[i].box.right);
        }
        edge = 1e9f;
        for (std::size_t i = line.pieces.size(); i-- > 0;) {
            after[i] = edge - line.pieces[i].box.right;
            if (isHigh(line.pieces[i], line)) edge = std::min(edge, line.pieces[i].box.left);
        }
        for (std::size_t i = 0; i < line.pieces.size(); ++i) {
            const Piece& piece = line.pieces[i];
            const Box& box = piece.box;
            const Measured& one = measured[l][i];
            const auto caps = [cap](float length) {
                return std::clamp(static_cast<double>(length / cap), -3.0, 3.0);
            };
            const auto share = [](float part, float whole) {
                return std::min(3.0, static_cast<double>(part / whole));
            };
            const float usualArea = usualStroke * usualStroke * cap * cap;
            visit(l, i,
                  {caps(box.height()),
                   caps(box.width()),
                   std::clamp(std::log2(static_cast<double>(static_cast<float>(piece.area) / usualArea)),
                              -4.0, 6.0),
                   share(one.contrast, usual),
                   share(one.contrast, overall),
                   share(usual, overall),
                   share(one.stroke, usualStroke * cap),
                   caps(line.metrics.baseline - box.bottom),
                   caps(line.metrics.baseline - box.top),
                   caps(std::min(before[i], after[i])),
                   caps(std::max(before[i], after[i])),
                   static_cast<double>(static_cast<float>(piece.area) / (box.width() * box.height())),
                   std::min(1.0, static_cast<double>(seen.noise() / overall)),
                   static_cast<double>(usualStroke),
                   static_cast<double>(line.pieces.size()) / (static_cast<double>(line.pieces.size()) + 5),
                   own.empty() ? 0.0 : 1.0,
                   look.joins == Look::Dots ? 1.0 : 0.0,
                   10 * static_cast<double>(look.blur) / look.side,
                   std::min(1.0, 20 / static_cast<double>(overall)),
                   std::clamp(std::log2(static_cast<double>(cap) / 32), -3.0, 3.0)});
        }
    }
}

}  // namespace

std::vector<std::vector<PrintTraits>> printTraits(const std::vector<LinePieces>& lines, const InkImage& ink,
                                                  const Binarizer& seen, const Look& look) {
    std::vector<std::vector<PrintTraits>> result(lines.size());
    forPrintTraits(lines, ink, seen, look, [&](std::size_t line, std::size_t, const PrintTraits& traits) {
        result[line].push_back(traits);
    });
    return result;
}

void dropForeign(std::vector<LinePieces>& lines, const InkImage& ink, const Binarizer& seen, const Look& look,
                 Decisions& prints) {
    std::vector<std::vector<double>> odds(lines.size());
    forPrintTraits(lines, ink, seen, look, [&](std::size_t l, std::size_t, const PrintTraits& traits) {
        odds[l].push_back(kPrintLikeness(traits));
    });
    for (std::size_t l = 0; l < lines.size(); ++l) {
        auto of = odds[l].begin();
        std::erase_if(lines[l].pieces, [&](Piece& piece) {
            const double one = *of++;
            if (prints.decide(one)) return false;
            if (one > kHardlyDirt && lines[l].leftOut.size() < kMostLeftOut)
                lines[l].leftOut.push_back(std::move(piece));
            return true;
        });
    }
    std::erase_if(lines, [](const LinePieces& line) {
        return std::none_of(line.pieces.begin(), line.pieces.end(), [&line](const Piece& piece) {
            return piece.box.height() > 0.45f * line.metrics.capHeight;
        });
    });
}

}  // namespace dravik::engine
