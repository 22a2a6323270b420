#include "engine/scene/PrintAlone.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "engine/image/Thumbnail.h"
#include "engine/recogniser/BaseReader.h"
#include "engine/recogniser/InkNetwork.h"

namespace dravik::engine {
namespace {

// Pixels of the pictures that the network looks at where it is not known how high print is; most parts show
// some ten characters.
constexpr std::array<double, 2> kPixels = {12'000, 36'000};
// What it is worth that a picture looks like text, beside its characters looking whole, and that another view
// shows as many characters; logarithms, measured on generated part images.
constexpr double kLikeText = 0.5, kAgreed = 2;
// Of a picture of print so much is ink; noise has less, a texture more.
constexpr double kLeastInk = 0.002, kMostInk = 0.5;
// Log odds beyond which no other size is tried; nor is it in a larger picture, where it takes long, once
// one shows something that is rather print than not.
constexpr double kSurelyPrint = 2.2;
constexpr int kLarge = 60'000;

// The lengths of the longer side at which the network looks at it.
std::vector<int> sides(const GreyImage& picture) {
    const int longest = std::max(picture.width(), picture.height());
    std::vector<int> result;
    for (const double pixels : kPixels) {
        const double scale =
            std::min(1.0, std::sqrt(pixels / (static_cast<double>(picture.width()) * picture.height())));
        const int side = std::max(1, static_cast<int>(std::lround(scale * longest)));
        if (result.empty() || side > result.back()) result.push_back(side);
    }
    return result;
}

// As large as the picture, from one that is scaled down.
GreyImage enlarged(GreyImage small, const GreyImage& picture) {
    if (small.width() == picture.width() && small.height() == picture.height()) return small;
    GreyImage result(picture.width(), picture.height());
    const float across = static_cast<float>(small.width()) / static_cast<float>(picture.width());
    const float down = static_cast<float>(small.height()) / static_cast<float>(picture.height());
    for (int y = 0; y < result.height(); ++y) {
        const auto row = result.row(y);
        for (std::size_t x = 0; x < row.size(); ++x)
            row[x] = static_cast<std::uint8_t>(std::lround(small.levelAt(
                (static_cast<float>(x) + 0.5f) * across, (static_cast<float>(y) + 0.5f) * down)));
    }
    return result;
}

// A number of characters, and what it is worth.
struct Candidate {
    std::size_t characters = 0;
    double worth = 0;
    std::optional<PrintAlone> alone;  // nothing for the number that the picture itself shows
    bool isAgreed = false;            // two views show it
};

// Returns whether another view had shown the number.
bool add(std::vector<Candidate>& candidates, PrintAlone alone) {
    const double worth = alone.worth;
    for (Candidate& one : candidates)
        if (one.characters == alone.found.glyphs.size()) {
            if (one.alone && worth > one.alone->worth) one.alone = std::move(alone);
            one.worth = std::max(one.worth, worth) + kAgreed;
            one.isAgreed = one.characters >= kSomePrint;
            return one.isAgreed;
        }
    candidates.push_back({alone.found.glyphs.size(), worth, std::move(alone)});
    return false;
}

bool mayShowPrint(const GreyImage& ink) {
    double sum = 0;
    for (int y = 0; y < ink.height(); ++y)
        for (const std::uint8_t level : ink.row(y)) sum += level > 127 ? 1 : 0;
    const double share = sum / (static_cast<double>(ink.width()) * ink.height());
    return share > kLeastInk && share < kMostInk;
}

// Whether the print that was found is darker than what is around it.
bool isDark(const GreyImage& picture, const GreyImage& print) {
    double inside = 0, outside = 0, pixels = 0, others = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const bool isPrint = print(x, y) > 127;
            (isPrint ? inside : outside) += picture(x, y);
            ++(isPrint ? pixels : others);
        }
    return inside * others < outside * pixels;
}

}  // namespace

double worthOf(const Segmentation& found) {
    return found.glyphs.empty() ? 0 : wholeCharacterOdds(found) + kLikeText * found.likeness;
}

SecondOpinion findInPrintAlone(const GreyImage& picture, std::size_t characters, double worth,
                               const PrintSettings& print, const std::stop_token& stop) {
    if (picture.empty()) return {};
    std::vector<Candidate> candidates;
    candidates.push_back({characters, worth, {}});
    // The network has told polarity and kind.
    const PrintSettings settings{Polarity::LightOnDark, PrintKind::Automatic, print.smallestHeight};
    const bool isLarge = picture.width() * picture.height() > kLarge;
    for (const int side : sides(picture)) {
        if (stop.stop_requested()) return {};
        GreyImage ink = inkOf(thumbnailOf(picture, side));
        if (!mayShowPrint(ink)) continue;
        PrintAlone alone;
        alone.picture = std::make_shared<GreyImage>(enlarged(std::move(ink), picture));
        alone.isDark = isDark(picture, *alone.picture);
        if (!print.allows(alone.isDark)) continue;
        alone.found = segment(*alone.picture, takeWholeCharacters, stop, settings, Search::PrintAlone);
        if (alone.found.glyphs.empty()) continue;
        alone.worth = worthOf(alone.found);
        const bool isEnough = alone.found.likeness >= kSurelyPrint || (isLarge && alone.worth > 0);
        if (add(candidates, std::move(alone)) || isEnough) break;
    }
    Candidate& best =
        *std::max_element(candidates.begin(), candidates.end(),
                          [](const Candidate& a, const Candidate& b) { return a.worth < b.worth; });
    return {std::move(best.alone), best.isAgreed};
}

}  // namespace dravik::engine
