#include "trainer/window/CharacterMarks.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>
#include <utility>

namespace dravik::trainer {
namespace {

constexpr double kBoxGap = PartPlacement::kBoxGap;

// In 1/96 inch.
constexpr double kTagGap = 1.5;
constexpr double kTagPadding = 5;  // both sides together
constexpr double kSurplusGap = 8;  // from the last box to what is typed too much
constexpr double kConfidenceHeight = 3;
constexpr double kLeastText = 9, kMostText = 14;

// Of a tag's text, in its height of letters.
constexpr double kUsualWidth = 0.7, kUsualHeight = 1.2;

// Readings are held against labels by their places in images of at most so many characters.
constexpr std::size_t kMostMatched = 2000;

constexpr char kDiffers[] = "\u2260";

}  // namespace

void CharacterMarks::setCharacters(std::vector<LabelledCharacter> characters, int mismatch, int pointedAt) {
    characters_ = std::move(characters);
    lineHeights_.clear();
    for (const LabelledCharacter& one : characters_) {
        float& highest = lineHeights_[one.place.line];
        highest = std::max(highest, one.box.height);
    }
    mismatch_ = mismatch;
    pointedAt_ = pointedAt;
    matchReading();
}

void CharacterMarks::setReading(std::vector<engine::ReadCharacter> reading) {
    reading_ = std::move(reading);
    matchReading();
}

// A reading may have a character more or fewer than there are boxes.
void CharacterMarks::matchReading() {
    characterOfRead_.assign(reading_.size(), -1);
    if (reading_.size() == characters_.size()) {
        std::iota(characterOfRead_.begin(), characterOfRead_.end(), 0);
        return;
    }
    if (reading_.size() > kMostMatched || characters_.size() > kMostMatched) return;
    for (std::size_t i = 0; i < reading_.size(); ++i) {
        const engine::FoundCharacter& read = reading_[i].place;
        int most = 0;
        for (std::size_t k = 0; k < characters_.size(); ++k) {
            const engine::FoundCharacter& found = characters_[k].place;
            const int wide = std::min(read.right, found.right) - std::max(read.left, found.left);
            const int high = std::min(read.bottom, found.bottom) - std::max(read.top, found.top);
            if (wide <= 0 || high <= 0 || wide * high <= most) continue;
            most = wide * high;
            characterOfRead_[i] = static_cast<int>(k);
        }
    }
}

int CharacterMarks::characterAt(ViewPoint place) const {
    int found = -1;
    float area = 0;
    const ViewPoint on = at_.toImage(place);
    for (std::size_t i = 0; at_.image() && i < characters_.size(); ++i) {
        engine::RotatedBox box = characters_[i].box;
        box.width += static_cast<float>(2 * kBoxGap / at_.scale());
        box.height += static_cast<float>(2 * kBoxGap / at_.scale());
        if (!box.contains({static_cast<float>(on.x), static_cast<float>(on.y)}) ||
            (found >= 0 && box.width * box.height >= area))
            continue;
        found = static_cast<int>(i);
        area = box.width * box.height;
    }
    return found;
}

const engine::ReadCharacter* CharacterMarks::readingOf(int character) const {
    const auto read = std::find(characterOfRead_.begin(), characterOfRead_.end(), character);
    return character < 0 || read == characterOfRead_.end()
               ? nullptr
               : &reading_[static_cast<std::size_t>(read - characterOfRead_.begin())];
}

std::string CharacterMarks::tipAt(ViewPoint place) const {
    const engine::ReadCharacter* read = readingOf(characterAt(place));
    if (!read) return {};
    const auto sure = [](const std::string& character, double confidence) {
        return character + " " + std::to_string(std::lround(100 * confidence)) + " %";
    };
    std::string tip = "reads " + sure(read->character, read->confidence);
    for (const engine::Alternative& other : read->alternatives)
        if (other.confidence >= 0.01) tip += ", " + sure(other.character, other.confidence);
    return tip;
}

bool CharacterMarks::warns(const LabelledCharacter& character) const {
    return (mismatch_ != 0 && character.label.empty()) || !character.doubt.empty();
}

std::vector<ViewFrame> CharacterMarks::frames(int selected,
                                              const std::optional<engine::RotatedBox>& dragged) const {
    std::vector<ViewFrame> frames;
    for (std::size_t i = 0; i < characters_.size(); ++i) {
        const bool isSelected = static_cast<int>(i) == selected;
        const engine::RotatedBox& box = isSelected && dragged ? *dragged : characters_[i].box;
        if (!at_.isSeen(at_.boxOf(box))) continue;
        const bool warned = warns(characters_[i]);
        ViewFrame frame = at_.frameOf(box, warned ? kMismatchColor : kLabelledColor);
        frame.dashed = warned;
        frame.heavy = warned || isSelected || static_cast<int>(i) == pointedAt_;
        frames.push_back(frame);
    }
    for (std::size_t i = 0; showsReading_ && i < reading_.size(); ++i)
        if (const auto bar = confidenceBar(i)) frames.push_back(*bar);
    return frames;
}

// A bar above the box tells how sure the font is of what it reads there.
std::optional<ViewFrame> CharacterMarks::confidenceBar(std::size_t read) const {
    if (characterOfRead_[read] < 0) return std::nullopt;
    const double confidence = reading_[read].confidence;
    engine::RotatedBox bar = characters_[static_cast<std::size_t>(characterOfRead_[read])].box;
    const float sure = static_cast<float>(std::clamp(confidence, 0.0, 1.0));
    const float high = static_cast<float>(at_.units(kConfidenceHeight) / at_.scale());
    const auto middle =
        bar.toImage({0.5f * (sure - 1) * bar.width,
                     -0.5f * (bar.height + high) - static_cast<float>(kBoxGap / at_.scale())});
    bar = {middle.x, middle.y, sure * bar.width, high, bar.angle};
    if (!at_.isSeen(at_.boxOf(bar))) return std::nullopt;
    ViewFrame frame;
    frame.color = confidence < kWeakConfidence ? kMismatchColor : kReadColor;
    frame.filled = true;
    const auto corners = bar.corners();
    for (std::size_t k = 0; k < corners.size(); ++k) frame.corners[k] = at_.toView(corners[k]);
    return frame;
}

// Letters are as large in all of a line, also at a hyphen.
ViewTag CharacterMarks::tagOf(const LabelledCharacter& character, bool above, std::string text,
                              ui::Color color) const {
    const auto scaled = [this](double length) { return static_cast<int>(std::lround(at_.units(length))); };
    const auto corners = at_.frameOf(character.box, color).corners;
    const ViewPoint& a = corners[above ? 0 : 3];
    const ViewPoint& b = corners[above ? 1 : 2];
    const ViewPoint& inner = corners[above ? 3 : 0];
    const double length = std::max(1e-6, std::hypot(a.x - inner.x, a.y - inner.y));
    ViewTag tag;
    tag.from = {(a.x + b.x) / 2, (a.y + b.y) / 2};
    tag.away = {(a.x - inner.x) / length, (a.y - inner.y) / length};
    tag.text = std::move(text);
    tag.color = color;
    const double high = lineHeights_.at(character.place.line) * at_.scale();
    tag.textHeight = std::clamp(static_cast<int>(high * 0.45), scaled(kLeastText), scaled(kMostText));
    return tag;
}

ViewBox CharacterMarks::tagPlace(const ViewTag& tag, double textWidth, double textHeight) const {
    const double wide = std::max(textWidth + at_.units(kTagPadding), textHeight * 0.8);
    const double out =
        at_.units(kTagGap) + (std::abs(tag.away.x) * wide + std::abs(tag.away.y) * textHeight) / 2;
    return {tag.from.x + out * tag.away.x - wide / 2, tag.from.y + out * tag.away.y - textHeight / 2, wide,
            textHeight};
}

// About where it stands, whatever the view's letters are.
ViewBox CharacterMarks::usualPlace(const ViewTag& tag) const {
    return tagPlace(tag, kUsualWidth * tag.textHeight, kUsualHeight * tag.textHeight);
}

std::vector<ViewTag> CharacterMarks::tags() const {
    std::vector<ViewTag> tags;
    for (const LabelledCharacter& character : characters_) {
        const bool lacks = mismatch_ != 0 && character.label.empty();
        if ((!lacks && character.label.empty()) || !at_.isSeen(at_.boxOf(character.box))) continue;
        tags.push_back(tagOf(character, false, lacks ? "?" : character.label,
                             warns(character) ? kMismatchColor : kLabelledColor));
    }
    if (mismatch_ > 0 && !characters_.empty()) {
        ViewTag tag = tagOf(characters_.back(), false, "+" + std::to_string(mismatch_), kMismatchColor);
        tag.from.x += at_.boxOf(characters_.back().box).width + at_.units(kSurplusGap);
        if (at_.isSeen({tag.from.x, tag.from.y, 1, 1})) tags.push_back(tag);
    }
    if (showsReading_) addReadings(tags);
    return tags;
}

// What is read as it is labelled gives way to the print of the line above and its labels, where lines stand
// close: all of its line, since what was left of it would look like a part of the labels above.
void CharacterMarks::addReadings(std::vector<ViewTag>& tags) const {
    std::vector<ViewBox> others;
    others.reserve(tags.size());
    for (const ViewTag& tag : tags) others.push_back(usualPlace(tag));
    for (const LabelledCharacter& character : characters_)
        if (const ViewBox box = at_.boxOf(character.box); at_.isSeen(box)) others.push_back(box);
    double widest = 0;
    for (const ViewBox& other : others) widest = std::max(widest, other.width);
    const auto leftOf = [](const ViewBox& one, const ViewBox& other) { return one.left < other.left; };
    std::sort(others.begin(), others.end(), leftOf);
    const auto covers = [&](const ViewBox& place) {
        auto other = std::lower_bound(others.begin(), others.end(), place.grownBy(widest), leftOf);
        for (; other != others.end() && other->left < place.right(); ++other)
            if (other->intersects(place)) return true;
        return false;
    };
    std::vector<std::pair<int, ViewTag>> asLabelled;  // with the line of each
    std::set<int> crowded;
    for (std::size_t i = 0; i < reading_.size(); ++i) {
        if (characterOfRead_[i] < 0) continue;
        const LabelledCharacter& character = characters_[static_cast<std::size_t>(characterOfRead_[i])];
        if (!at_.isSeen(at_.boxOf(character.box))) continue;
        const std::string text = engine::shownCharacter(reading_[i]);
        const bool differs = !character.label.empty() && text != character.label;
        const bool weak = reading_[i].confidence < kWeakConfidence;
        ViewTag tag = tagOf(character, true, (differs ? kDiffers : "") + text,
                            weak || differs ? kMismatchColor : kReadColor);
        tag.outlined = !differs;
        const double clear = at_.units(kConfidenceHeight) + kBoxGap;
        tag.from.x += clear * tag.away.x;
        tag.from.y += clear * tag.away.y;
        if (text != character.label) {
            tags.push_back(std::move(tag));
            continue;
        }
        if (covers(usualPlace(tag))) crowded.insert(character.place.line);
        asLabelled.emplace_back(character.place.line, std::move(tag));
    }
    for (auto& [line, tag] : asLabelled)
        if (!crowded.contains(line)) tags.push_back(std::move(tag));
}

}  // namespace dravik::trainer
