#include "engine/segmentation/PrintLooks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

#include "base/StableSort.h"
#include "engine/segmentation/OneLook.h"
#include "engine/segmentation/TextLikeness.h"

namespace dravik::engine {
namespace {

// Most pixels of the picture that the search starts on, and of the one that it ends on.
constexpr std::int64_t kFirstPixels = 500'000;
constexpr std::int64_t kMostWorkingPixels = 4'000'000;
// Log odds of a candidate being right, beyond which others of its kind are not tried.
constexpr double kClearText = 2.2;
constexpr double kLikelyText = 1;
constexpr double kBeyondDoubt = 2.6;
// No finer grain tells print from its ground, and a sixth of the usual one, for small print, is tried in a
// view of at most so many pixels.
constexpr int kFinest = 8, kMostForFinest = 60'000;
// How many combinations of size and polarity are examined at full size.
constexpr std::size_t kMostClose = 2;
// Small print is enlarged twice in regions up to this many image pixels; larger ones would take too much
// memory.
constexpr std::int64_t kMostDoubled = 310'000;
// The pieces that were found are kept for a second use when the picture has at most this many pixels.
constexpr std::size_t kMostHeld = 500'000;
// Heights of capitals, in working pixels, at which characters are best told apart.
constexpr float kBestHeight = 32;
constexpr double kHopeless = -5, kNothing = -1e9;
// What a candidate is worth at least whose characters are clear to the judge.
constexpr double kJudgedClear = 3;
// Other cuts and joins are tried where the characters are on average so much likelier whole ones than usual,
// as a logarithm, and together by so much more whole than where they made no clear ones.
constexpr double kPromising = 0.6, kMoreWhole = 1;
// Judging more or larger print would take long.
constexpr std::size_t kMostJudged = 300;
constexpr double kMostPixelsJudged = 1'000'000;
// Whole image pixels to a working pixel, so that a region takes no more working pixels than that, and none of
// its sides too many.
int leastScale(const Region& region, std::int64_t pixels) {
    int scale = 1;
    while (static_cast<std::int64_t>(region.width() / scale) * (region.height() / scale) > pixels ||
           std::max(region.width(), region.height()) / scale > kMostInkSide)
        ++scale;
    return scale;
}

int grain(float height) {
    return std::clamp(static_cast<int>(std::lround(0.75f * height)), 8, 400);
}

// An image that is being looked at.
class Looking {
  public:
    Looking(const GreyImage& image, Search search, ViewJudge judge, const std::stop_token& stop,
            const PrintSettings& print)
        : image_(image), search_(search), judge_(judge), stop_(stop), print_(print) {}

    std::vector<Candidate> candidates() &&;

  private:
    const Binarizer& turnTo(const Region& region, float scale);
    bool isAllowed(const Look& look) const;
    double consider(Look look);
    void judge(Candidate& one);
    void hold();
    void keepLast();
    bool firstLooks();
    float closeScale(const Candidate& first, const Region& region) const;
    bool isClose(const Candidate& one) const;
    bool lookCloser(const Candidate& first);
    Region around(const Candidate& first) const;

    const GreyImage& image_;
    const Search search_;
    const ViewJudge judge_;
    const std::stop_token& stop_;
    const PrintSettings& print_;
    const Region whole_{0, 0, image_.width(), image_.height()};
    std::optional<Binarizer> view_;
    Segmentation seen_;                     // by the last look, in that view
    bool isSeen_ = false, isText_ = false;  // if it is text, it is the last candidate's
    std::vector<Candidate> found_;
    Wholeness mostWhole_;          // of all that were judged
    double mostTried_ = kNothing;  // of those whose cuts and joins were tried for nothing
    bool isCloser_ = false;        // the first looks are over
};

// A small grain may be narrower than strokes, a large one takes neighbours for background.
bool suits(const Candidate& one) {
    const float height = one.height / one.scale, side = static_cast<float>(one.look.side);
    return side >= 0.55f * height && side <= 1.2f * height;
}

Region printOf(const Segmentation& found) {
    Region region = found.place(found.glyphs.front());
    for (const Glyph& glyph : found.glyphs) {
        const Region place = found.place(glyph);
        region = {std::min(region.left, place.left), std::min(region.top, place.top),
                  std::max(region.right, place.right), std::max(region.bottom, place.bottom)};
    }
    return region;
}

// Makes a part of the image ready to be looked at; it stays so until another is wanted.
const Binarizer& Looking::turnTo(const Region& region, float scale) {
    if (view_ && view_->region() == region && view_->scale() == scale) return *view_;
    seen_ = {};
    isSeen_ = isText_ = false;
    view_.reset();
    return view_.emplace(image_, region, scale);
}

// Whether the operator's settings leave room for it.
bool Looking::isAllowed(const Look& look) const {
    if (!print_.allows(look.dark)) return false;
    switch (print_.kind) {
        case PrintKind::Solid:
            return look.joins != Look::Dots;
        case PrintKind::DotMatrix:
            return look.joins == Look::Dots || (look.joins == Look::None && look.blur > 0);
        case PrintKind::Automatic:
            break;
    }
    return true;
}

// Segments the picture with the parameters `look` and keeps the result when it resembles text; returns how
// much (log odds), kNothing when not at all.
double Looking::consider(Look look) {
    if (stop_.stop_requested() || !isAllowed(look)) return kNothing;
    look.leastHeight = static_cast<float>(print_.smallestHeight) / view_->scale();
    const Look& last = seen_.look;
    const bool again = isSeen_ && last.dark == look.dark && last.side == look.side &&
                       Binarizer::radius(last.blur) == Binarizer::radius(look.blur);
    InkImage ink = std::move(seen_.ink);
    seen_ = {};
    if (!again) ink = view_->separate(look.dark, look.side, look.blur, std::move(ink.ink));
    seen_.look = look;
    seen_.ink = std::move(ink);
    findCharacters(seen_, linesSeen(seen_), *view_);
    isSeen_ = true;
    isText_ = looksLikeText(seen_);
    if (!isText_) return kNothing;
    Candidate& one = found_.emplace_back();
    one.look = look;
    one.region = view_->region();
    one.scale = view_->scale();
    one.characters = seen_.glyphs.size();
    one.traits = textTraits(seen_, *view_);
    one.value = kTextLikeness(one.traits);
    one.height = typicalHeight(seen_) * seen_.ink.scale;
    one.print = printOf(seen_);
    for (const Glyph& glyph : seen_.glyphs) one.ink += glyph.piece.area;
    judge(one);
    return one.value;
}

// Has the candidate of the last look judged where its own traits do not say enough.
void Looking::judge(Candidate& one) {
    if (!judge_ || one.value < kHopeless || one.value >= kBeyondDoubt || !isWorthJudging(one)) return;
    for (const Candidate& other : found_)
        if (other.look.dark == one.look.dark && other.characters == one.characters && other.ink == one.ink &&
            other.scale == one.scale && other.whole.odds > kNothing) {
            one.whole = other.whole;
            one.likeliest = other.likeliest;
            return;
        }
    one.whole = judge_(seen_, Pieces::AsFound);
    if (!one.whole.isClear && one.whole.odds > kPromising * static_cast<double>(one.characters) &&
        one.whole.odds > mostTried_ + kMoreWhole && (isCloser_ || isClose(one))) {
        std::vector<Glyph> asFound = seen_.glyphs, leftOut = seen_.leftOut;
        const Wholeness improved = judge_(seen_, Pieces::Likeliest);
        one.isImproved = improved.isClear && improved.odds >= mostWhole_.odds;
        if (one.isImproved) {
            one.whole = improved;
            one.characters = seen_.glyphs.size();
        } else {
            std::swap(seen_.glyphs, asFound);
            one.likeliest =
                std::make_shared<LikeliestPieces>(LikeliestPieces{std::move(asFound), improved.odds});
            seen_.leftOut = std::move(leftOut);
            mostTried_ = one.whole.odds;
        }
    }
    if (one.whole.odds >= mostWhole_.odds)
        mostWhole_ = one.whole;
    else
        one.whole.isClear = false;
    if (one.whole.isClear) one.value = std::max(one.value, kJudgedClear);
}

// Holds what the last look found when it is the likeliest: it will probably be wanted.
void Looking::hold() {
    Candidate& last = found_.back();
    if (seen_.ink.ink.size() > kMostHeld) return;
    for (const Candidate& other : found_)
        if (other.seen && other.value >= last.value) return;
    for (Candidate& other : found_) other.seen.reset();
    last.seen = std::make_unique<Segmentation>(std::move(seen_));
    seen_ = {};
    isSeen_ = isText_ = false;
}

// Keeps what the last look found.
void Looking::keepLast() {
    if (isText_ && !found_.empty()) found_.back().seen = std::make_unique<Segmentation>(std::move(seen_));
}

// Looks at the whole image with several grains and both polarities, the likelier ones first, until one is
// clear, which is the last candidate then.
bool Looking::firstLooks() {
    for (int scale = leastScale(whole_, kFirstPixels);; scale = (scale + 1) / 2) {
        const Binarizer& view = turnTo(whole_, static_cast<float>(scale));
        if (view.empty()) return false;
        const bool dark = view.leansDark();
        const int first = std::clamp(std::min(view.width(), view.height()) / 4, kFinest, 64);
        // Not where the other polarity has shown much more whole characters.
        const auto isPossible = [&](bool polarity) {
            double own = 0, other = 0;
            for (const Candidate& one : found_) {
                double& most = one.look.dark == polarity ? own : other;
                most = std::max(most, one.whole.odds);
            }
            return own >= other - kMuchLessWhole;
        };
        const auto isClear = [&](const Look& look) {
            return isPossible(look.dark) && consider(look) >= kClearText && search_ != Search::All;
        };
        std::vector<int> sides{first};
        if (search_ != Search::PrintAlone) sides.push_back(first / 3);
        if (search_ != Search::PrintAlone && view.width() * view.height() <= kMostForFinest)
            sides.push_back(first / 6);
        std::erase_if(sides, [](int side) { return side < kFinest; });
        for (const int side : sides)
            for (const bool polarity : {dark, !dark})
                for (const Look::Joining joins : {Look::Fragments, Look::Dots})
                    if (isClear({polarity, side, 0, joins})) return true;
        for (const int side : sides)
            for (const bool polarity : {dark, !dark})
                if (isClear({polarity, side, 0.09f * static_cast<float>(side), Look::None})) return true;
        if (stop_.stop_requested()) return false;
        const bool likely = std::any_of(found_.begin(), found_.end(),
                                        [](const Candidate& one) { return one.value >= kLikelyText; });
        if (likely || scale == 1 || leastScale(whole_, kMostWorkingPixels) > (scale + 1) / 2) return false;
    }
}

// There may be more print along the lines than was seen at first.
Region Looking::around(const Candidate& first) const {
    const int beside = static_cast<int>(8 * first.height) + 4, above = static_cast<int>(3 * first.height) + 4;
    const Region region{std::max(whole_.left, first.print.left - beside),
                        std::max(whole_.top, first.print.top - above),
                        std::min(whole_.right, first.print.right + beside),
                        std::min(whole_.bottom, first.print.bottom + above)};
    const double share = static_cast<double>(region.width()) * region.height() /
                         (static_cast<double>(whole_.width()) * whole_.height());
    return share > 0.6 ? whole_ : region;
}

// Image pixels to a working pixel that suit the height of print.
float Looking::closeScale(const Candidate& first, const Region& region) const {
    if (first.height < 0.6f * kBestHeight &&
        static_cast<std::int64_t>(region.width()) * region.height() <= kMostDoubled &&
        2 * std::max(region.width(), region.height()) <= kMostInkSide)
        return 0.5f;
    return std::max(static_cast<float>(leastScale(region, kMostWorkingPixels)),
                    std::round(first.height / kBestHeight));
}

// Whether a closer look would be at the same pixels.
bool Looking::isClose(const Candidate& one) const {
    const Region region = around(one);
    return region == one.region && closeScale(one, region) == one.scale;
}

// Once more, closer, with the size and the grain that suit the print's height. Returns whether the print is
// clear now.
bool Looking::lookCloser(const Candidate& first) {
    const Region region = around(first);
    const float scale = closeScale(first, region);
    const float height = first.height / scale;
    turnTo(region, scale);
    const int side = grain(height);
    const bool dark = first.look.dark;
    const std::array<Look, 6> looks = {{{dark, side, 0, Look::Fragments},
                                        {dark, side, 0, Look::Dots},
                                        {dark, side, 0, Look::None},
                                        {dark, side, 0.045f * height, Look::None},
                                        {dark, side, 0.07f * height, Look::None},
                                        {dark, side, 0.095f * height, Look::None}}};
    bool clear = false;
    for (const Look& look : looks) {
        const double value = consider(look);
        if (search_ == Search::All) continue;
        if (value >= kClearText) {
            clear = true;
            hold();
        }
        if (value >= kBeyondDoubt || mostWhole_.isClear) break;
        // More blur makes characters even less whole.
        if (look.blur > 0 && mostWhole_.odds > 0 &&
            (!isText_ || found_.back().whole.odds < mostWhole_.odds - kMuchLessWhole))
            break;
    }
    return clear;
}

std::vector<Candidate> Looking::candidates() && {
    if (firstLooks()) {
        found_.erase(found_.begin(), found_.end() - 1);
        const Candidate& one = found_.front();
        if (suits(one)) hold();
        if (one.value >= kJudgedClear && suits(one) && isClose(one)) return std::move(found_);
    }
    isCloser_ = true;
    std::vector<Candidate> first = std::move(found_);
    found_.clear();
    const auto wholeness = [](const Candidate& one) {
        return one.value >= kBeyondDoubt ? -kNothing : std::max(0.0, one.whole.odds);
    };
    stableSort(first.begin(), first.end(), [&](const Candidate& a, const Candidate& b) {
        return wholeness(a) != wholeness(b) ? wholeness(a) > wholeness(b) : a.value > b.value;
    });
    std::vector<std::pair<bool, float>> seen;
    for (const Candidate& candidate : first) {
        if (seen.size() >= kMostClose || stop_.stop_requested() ||
            wholeness(candidate) < wholeness(first.front()) - kMuchLessWhole)
            break;
        const auto same = [&](const std::pair<bool, float>& other) {
            return other.first == candidate.look.dark && other.second < 1.4f * candidate.height &&
                   candidate.height < 1.4f * other.second;
        };
        if (std::any_of(seen.begin(), seen.end(), same)) continue;
        seen.emplace_back(candidate.look.dark, candidate.height);
        if (lookCloser(candidate)) break;
    }
    keepLast();
    // Of the first looks those count whose grain happened to suit the print, and one that is clear while no
    // closer one is more whole.
    std::erase_if(first, [this](const Candidate& one) {
        return one.whole.isClear ? one.whole.odds < mostWhole_.odds : !suits(one);
    });
    found_.insert(found_.begin(), std::move_iterator(first.begin()), std::move_iterator(first.end()));
    return std::move(found_);
}

}  // namespace

bool isWorthJudging(const Candidate& one) {
    const double pixels = static_cast<double>(one.region.width()) * one.region.height() /
                          (static_cast<double>(one.scale) * static_cast<double>(one.scale));
    return one.characters <= kMostJudged && pixels <= kMostPixelsJudged;
}

std::vector<Candidate> printCandidates(const GreyImage& image, Search search, ViewJudge judge,
                                       const std::stop_token& stop, const PrintSettings& print) {
    return Looking(image, search, judge, stop, print).candidates();
}

Segmentation seenAgain(const GreyImage& image, const Region& region, float scale, const Look& look) {
    const Binarizer view(image, region, scale);
    Segmentation seen;
    seen.look = look;
    seen.ink = view.separate(look.dark, look.side, look.blur);
    findCharacters(seen, linesSeen(seen), view);
    return seen;
}

}  // namespace dravik::engine
