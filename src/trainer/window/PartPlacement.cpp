#include "trainer/window/PartPlacement.h"

#include <algorithm>
#include <cmath>

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

// In units.
constexpr double kBeyondView = 40;  // a box so far outside can still have a tag inside

ScrollState scrollState(int position, double content, int room) {
    return {position, std::max(0, static_cast<int>(std::ceil(content)) - room), std::max(room, 1),
            std::max(room / kLinesOfPage, 1)};
}

}  // namespace

void PartPlacement::placeImage(const engine::GreyImage* image) {
    image_ = image && !image->empty() ? image : nullptr;
    settle();
}

void PartPlacement::setViewport(int width, int height) {
    if (width == width_ && height == height_) return;
    width_ = width;
    height_ = height;
    settle();
}

void PartPlacement::setDisplay(Display display) {
    display_ = display;
    settle();
}

// After anything that decides about scale and scroll limits.
void PartPlacement::settle() {
    if (fits_) scale_ = fittingScale();
    scrollX_ = std::clamp(scrollX_, 0, horizontal().most);
    scrollY_ = std::clamp(scrollY_, 0, vertical().most);
    changed();
}

int PartPlacement::percent() const noexcept {
    return static_cast<int>(std::lround(scale_ * display_.devicePixels * 100));
}

double PartPlacement::fittingScale() const {
    if (!image_) return 1;
    const double margins = 2 * kFitMargin * display_.unit;
    const double wide = std::max(width_ - margins, kLeastFitted);
    const double high = std::max(height_ - margins - kTagRoom * display_.unit, kLeastFitted);
    return std::clamp(std::min(wide / image_->width(), high / image_->height()), kLeastScale,
                      kMostFittingScale * display_.unit);
}

void PartPlacement::fit() {
    fits_ = true;
    settle();
}

void PartPlacement::zoomIn() {
    zoomBy(1, centre());
}

void PartPlacement::zoomOut() {
    zoomBy(-1, centre());
}

void PartPlacement::showActualSize() {
    zoomAround(1 / display_.devicePixels, centre());
}

void PartPlacement::zoomBy(double steps, ViewPoint place) {
    zoomAround(scale_ * std::pow(kZoomStep, steps), place);
}

void PartPlacement::zoomAround(double scale, ViewPoint place) {
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
ScrollState PartPlacement::horizontal() const noexcept {
    const bool scrolls = image_ && !fits_;
    return scrollState(scrollX_, scrolls ? image_->width() * scale_ + 2 * kFitMargin * display_.unit : 0.0,
                       width_);
}

ScrollState PartPlacement::vertical() const noexcept {
    const bool scrolls = image_ && !fits_;
    return scrollState(
        scrollY_, scrolls ? image_->height() * scale_ + (2 * kFitMargin + kTagRoom) * display_.unit : 0.0,
        height_);
}

void PartPlacement::scrollTo(int x, int y) {
    x = std::clamp(x, 0, horizontal().most);
    y = std::clamp(y, 0, vertical().most);
    if (x == scrollX_ && y == scrollY_) return;
    scrollX_ = x;
    scrollY_ = y;
    changed();
}

// Brings a place of the view into it.
void PartPlacement::scrollTo(const ViewBox& box) {
    const auto by = [](double from, double to, int room) {
        if (from >= 0 && to <= room) return 0;
        return static_cast<int>(std::lround(0.5 * (from + to) - 0.5 * room));
    };
    scrollBy(by(box.left, box.right(), width_), by(box.top, box.bottom(), height_));
}

// Centred where there is room for more, else scrolled; in whole units, so that pixels stay sharp.
ViewBox PartPlacement::imagePlace() const {
    if (!image_) return {};
    const double margin = kFitMargin * display_.unit;
    const ViewBox image{0, 0, image_->width() * scale_, image_->height() * scale_};
    const double high = image.height + kTagRoom * display_.unit;
    const double left = image.width + 2 * margin <= width_ ? (width_ - image.width) / 2 : margin - scrollX_;
    const double top = high + 2 * margin <= height_ ? (height_ - high) / 2 : margin - scrollY_;
    return {std::round(left), std::round(top), image.width, image.height};
}

ViewPoint PartPlacement::toImage(ViewPoint place) const {
    const ViewBox image = imagePlace();
    return {(place.x - image.left) / scale_, (place.y - image.top) / scale_};
}

ViewPoint PartPlacement::toView(engine::RotatedBox::Point place) const {
    const ViewBox image = imagePlace();
    return {image.left + static_cast<double>(place.x) * scale_,
            image.top + static_cast<double>(place.y) * scale_};
}

// Upright, around the box.
ViewBox PartPlacement::boxOf(const engine::RotatedBox& box) const {
    double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;
    for (const ViewPoint& corner : frameOf(box, 0).corners) {
        left = std::min(left, corner.x);
        right = std::max(right, corner.x);
        top = std::min(top, corner.y);
        bottom = std::max(bottom, corner.y);
    }
    return {left, top, right - left, bottom - top};
}

ViewFrame PartPlacement::frameOf(const engine::RotatedBox& box, ui::Color color) const {
    engine::RotatedBox around = box;
    const float gap = static_cast<float>(2 * kBoxGap / scale_);
    around.width += gap;
    around.height += gap;
    ViewFrame frame;
    const auto corners = around.corners();
    for (std::size_t i = 0; i < corners.size(); ++i) frame.corners[i] = toView(corners[i]);
    frame.color = color;
    return frame;
}

bool PartPlacement::isSeen(const ViewBox& box) const {
    return box.intersects(ViewBox{0, 0, double(width_), double(height_)}.grownBy(kBeyondView));
}

}  // namespace dravik::trainer
