#include "trainer/window/PartViewModel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace dravik::trainer {
namespace {

constexpr double kLeastScale = 0.02;
constexpr double kMostScale = 32;
constexpr double kZoomStep = 1.25;
constexpr int kLinesOfPage = 12;

// In 1/96 inch.
constexpr double kMostFittingScale = 4;  // a tiny image is not blown up further by itself
constexpr double kFitMargin = 12;
constexpr double kTagRoom = 18;  // below the image, for the labels of its last line
constexpr double kLeastFitted = 16;
constexpr double kTagGap = 1.5;
constexpr double kTagPadding = 5;  // both sides together
constexpr double kSurplusGap = 8;  // from the last box to what is typed too much

// In units.
constexpr double kBoxGap = 2;
constexpr double kBeyondView = 40;  // a box so far outside can still have a tag inside

ScrollState scrollState(int position, double content, int room) {
    return {position, std::max(0, static_cast<int>(std::ceil(content)) - room), std::max(room, 1),
            std::max(room / kLinesOfPage, 1)};
}

}  // namespace

void PartViewModel::setImage(const engine::GreyImage* image, std::string message) {
    image_ = image && !image->empty() ? image : nullptr;
    message_ = std::move(message);
    endDrag();
    imageChanged();
    settle();
}

void PartViewModel::setCharacters(std::vector<LabelledCharacter> characters, int mismatch) {
    characters_ = std::move(characters);
    mismatch_ = mismatch;
    changed();
}

void PartViewModel::setViewport(int width, int height) {
    if (width == width_ && height == height_) return;
    width_ = width;
    height_ = height;
    settle();
}

void PartViewModel::setDisplay(Display display) {
    display_ = display;
    settle();
}

// After anything that decides about scale and scroll limits.
void PartViewModel::settle() {
    if (fits_) scale_ = fittingScale();
    scrollX_ = std::clamp(scrollX_, 0, horizontal().most);
    scrollY_ = std::clamp(scrollY_, 0, vertical().most);
    changed();
}

int PartViewModel::percent() const noexcept {
    return static_cast<int>(std::lround(scale_ * display_.devicePixels * 100));
}

double PartViewModel::fittingScale() const {
    if (!image_) return 1;
    const double margins = 2 * kFitMargin * display_.unit;
    const double wide = std::max(width_ - margins, kLeastFitted);
    const double high = std::max(height_ - margins - kTagRoom * display_.unit, kLeastFitted);
    return std::clamp(std::min(wide / image_->width(), high / image_->height()), kLeastScale,
                      kMostFittingScale * display_.unit);
}

void PartViewModel::fit() {
    fits_ = true;
    settle();
}

void PartViewModel::zoomIn() {
    zoomBy(1, centre());
}

void PartViewModel::zoomOut() {
    zoomBy(-1, centre());
}

void PartViewModel::showActualSize() {
    zoomAround(1 / display_.devicePixels, centre());
}

void PartViewModel::zoomBy(double steps, ViewPoint place) {
    zoomAround(scale_ * std::pow(kZoomStep, steps), place);
}

void PartViewModel::zoomAround(double scale, ViewPoint place) {
    if (!image_) return;
    const ViewPoint kept = toImage(place);
    fits_ = false;
    scale_ = std::clamp(scale, kLeastScale, kMostScale);
    const ViewBox now = imagePlace();
    scrollX_ += static_cast<int>(std::lround(now.left + kept.x * scale_ - place.x));
    scrollY_ += static_cast<int>(std::lround(now.top + kept.y * scale_ - place.y));
    settle();
}

// A fitted image needs no scroll bars; showing them would change what fits.
ScrollState PartViewModel::horizontal() const noexcept {
    const bool scrolls = image_ && !fits_;
    return scrollState(scrollX_, scrolls ? image_->width() * scale_ + 2 * kFitMargin * display_.unit : 0.0,
                       width_);
}

ScrollState PartViewModel::vertical() const noexcept {
    const bool scrolls = image_ && !fits_;
    return scrollState(
        scrollY_, scrolls ? image_->height() * scale_ + (2 * kFitMargin + kTagRoom) * display_.unit : 0.0,
        height_);
}

void PartViewModel::scrollTo(int x, int y) {
    x = std::clamp(x, 0, horizontal().most);
    y = std::clamp(y, 0, vertical().most);
    if (x == scrollX_ && y == scrollY_) return;
    scrollX_ = x;
    scrollY_ = y;
    changed();
}

bool PartViewModel::beginDrag(ViewPoint place) {
    if (!image_) return false;
    dragging_ = true;
    dragFrom_ = place;
    return true;
}

void PartViewModel::dragTo(ViewPoint place) {
    if (!dragging_) return;
    const ViewPoint from = std::exchange(dragFrom_, place);
    scrollBy(static_cast<int>(std::lround(from.x - place.x)),
             static_cast<int>(std::lround(from.y - place.y)));
}

// Centred where there is room for more, else scrolled; in whole units, so that pixels stay sharp.
ViewBox PartViewModel::imagePlace() const {
    if (!image_) return {};
    const double margin = kFitMargin * display_.unit;
    const ViewBox image{0, 0, image_->width() * scale_, image_->height() * scale_};
    const double high = image.height + kTagRoom * display_.unit;
    const double left = image.width + 2 * margin <= width_ ? (width_ - image.width) / 2 : margin - scrollX_;
    const double top = high + 2 * margin <= height_ ? (height_ - high) / 2 : margin - scrollY_;
    return {std::round(left), std::round(top), image.width, image.height};
}

ViewPoint PartViewModel::toImage(ViewPoint place) const {
    const ViewBox image = imagePlace();
    return {(place.x - image.left) / scale_, (place.y - image.top) / scale_};
}

ViewBox PartViewModel::boxOf(const engine::FoundCharacter& place) const {
    const ViewBox image = imagePlace();
    return ViewBox{image.left + place.left * scale_, image.top + place.top * scale_,
                   (place.right - place.left) * scale_, (place.bottom - place.top) * scale_}
        .grownBy(kBoxGap);
}

std::vector<CharacterMark> PartViewModel::marks() const {
    std::vector<CharacterMark> marks;
    if (!image_) return marks;
    const ViewBox seen = ViewBox{0, 0, double(width_), double(height_)}.grownBy(kBeyondView);
    for (const LabelledCharacter& character : characters_) {
        const ViewBox box = boxOf(character.place);
        const bool warns = mismatch_ != 0 && character.label.empty();
        if (box.intersects(seen)) marks.push_back({box, true, warns ? "?" : character.label, warns});
    }
    if (mismatch_ > 0 && !characters_.empty()) {
        ViewBox beside = boxOf(characters_.back().place);
        beside.left += beside.width + kSurplusGap * display_.unit;
        marks.push_back({beside, false, "+" + std::to_string(mismatch_), true});
    }
    return marks;
}

int PartViewModel::characterAt(ViewPoint place) const {
    int found = -1;
    double area = 0;
    for (std::size_t i = 0; image_ && i < characters_.size(); ++i) {
        const ViewBox box = boxOf(characters_[i].place);
        if (!box.contains(place) || (found >= 0 && box.width * box.height >= area)) continue;
        found = static_cast<int>(i);
        area = box.width * box.height;
    }
    return found;
}

int PartViewModel::tagTextHeight(const CharacterMark& mark) const {
    const auto scaled = [this](double length) {
        return static_cast<int>(std::lround(length * display_.unit));
    };
    return std::clamp(static_cast<int>(mark.box.height * 0.45), scaled(9), scaled(14));
}

ViewBox PartViewModel::tagPlace(const CharacterMark& mark, double textWidth, double textHeight) const {
    const double wide = std::max(textWidth + kTagPadding * display_.unit, textHeight * 0.8);
    return {mark.box.left + mark.box.width / 2 - wide / 2, mark.box.bottom() + kTagGap * display_.unit, wide,
            textHeight};
}

}  // namespace dravik::trainer
