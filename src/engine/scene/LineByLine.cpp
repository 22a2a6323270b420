#include "engine/scene/LineByLine.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "engine/scene/LineSurroundings.h"
#include "engine/scene/OtherThings.h"
#include "engine/scene/SeenLine.h"

namespace dravik::engine {
namespace {

// Print odds below which a line is none where another is clear.
constexpr double kNoLine = 0.8;
// Other lines are looked at that score so much and, beside clear ones, are like those in height by this
// factor and in direction by so much.
constexpr float kLeastScore = 2.4f, kAlike = 1.8f, kOneDirection = 0.16f;  // radians
// Further lines are searched until there are so many.
constexpr std::size_t kMostLines = 40;

bool isClear(const SeenLine& seen) {
    return seen.isClear();
}

// The clear line that scores best; null where none is clear.
const SeenLine* clearest(std::span<const SeenLine> lines) {
    const SeenLine* result = nullptr;
    for (const SeenLine& one : lines)
        if (one.isClear() && (!result || one.line.score > result->line.score)) result = &one;
    return result;
}

// Where a line shows nothing clear, one of the other polarity may have been the print, and lines of a few
// characters may seem to be of another direction. What is clear there, or likelier, takes its place.
void lookAtOthers(std::span<const TextLine> others, const LineSight& sight, std::vector<SeenLine>& lines) {
    for (TextLine line : others) {
        if (line.score < kLeastScore) continue;
        if (const SeenLine* const clear = clearest(lines)) {
            const TextLine& print = clear->line;
            if (line.dark != print.dark || line.height() > kAlike * print.height() ||
                print.height() > kAlike * line.height() || std::abs(line.angle - print.angle) > kOneDirection)
                continue;
            line = turned(line, print.angle);
        }
        const auto isThere = [&](const SeenLine& one) { return isSamePlace(one.line, line); };
        if (std::any_of(lines.begin(), lines.end(),
                        [&](const SeenLine& one) { return one.isClear() && isThere(one); }))
            continue;
        SeenLine seen = sight.look(line, line.height());
        const bool isLikelier = std::any_of(lines.begin(), lines.end(), [&](const SeenLine& one) {
            return isThere(one) && one.odds < seen.odds;
        });
        if (!seen.isClear() && !isLikelier) continue;
        std::erase_if(lines, isThere);
        lines.push_back(std::move(seen));
    }
}

// Of lines that reached the same place the one with most characters stays.
void keepOneOfEachPlace(std::vector<SeenLine>& lines) {
    std::vector<SeenLine> kept;
    for (SeenLine& one : lines) {
        const auto other = std::find_if(kept.begin(), kept.end(), [&](const SeenLine& before) {
            return isSamePlace(one.line, before.line);
        });
        if (other == kept.end())
            kept.push_back(std::move(one));
        else if (one.part.found.glyphs.size() > other->part.found.glyphs.size())
            *other = std::move(one);
    }
    lines = std::move(kept);
}

void dropUnclear(std::vector<SeenLine>& lines) {
    const bool clear = std::any_of(lines.begin(), lines.end(), isClear);
    std::erase_if(lines, [&](const SeenLine& one) {
        return one.part.found.glyphs.empty() || (clear && one.part.found.glyphs.size() < 2) ||
               one.odds < (clear ? kNoLine : kPerhapsPrint);
    });
}

// Above, below and between lines that were found there are sometimes some that were not, and next to those.
void lookForNext(const LineSight& sight, std::vector<SeenLine>& lines) {
    for (std::size_t i = 0; i < lines.size() && lines.size() < kMostLines; ++i)
        for (const Side side : {Side::Below, Side::Above}) {
            if (!lines[i].isClear()) break;
            if (std::optional<SeenLine> next = nextLine(lines[i], side, lines, sight)) {
                extend(*next, sight);
                lines.push_back(*std::move(next));
            }
        }
}

}  // namespace

Scene lineByLine(const GreyImage& image, const TextLines& found, const PrintSettings& print,
                 const std::stop_token& stop) {
    const LineSight sight(image, found.lines, print, stop);
    std::vector<SeenLine> lines;
    for (const TextLine& line : found.lines) lines.push_back(sight.look(line, line.height()));
    lookAtOthers(found.others, sight, lines);
    for (SeenLine& one : lines)
        if (one.isClear()) extend(one, sight);
    sortInReadingOrder(lines, &SeenLine::line);
    keepOneOfEachPlace(lines);
    dropUnclear(lines);
    lookForNext(sight, lines);
    sortInReadingOrder(lines, &SeenLine::line);

    Scene scene;
    int number = 0;
    for (SeenLine& one : lines) {
        leaveOutOtherThings(one.part, image);
        one.part.firstLine = number;
        number += static_cast<int>(one.part.found.lines.size());
        scene.parts.push_back(std::move(one.part));
    }
    tellOfNeighbours(scene);
    return scene;
}

}  // namespace dravik::engine
