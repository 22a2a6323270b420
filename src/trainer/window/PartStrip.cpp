#include "trainer/window/PartStrip.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "trainer/window/ActionPictures.h"

namespace dravik::trainer {
namespace {

constexpr std::size_t kKeptPictures = 400;
// Most pictures are made in this time, and then the next one need not wait for the timer.
constexpr std::chrono::milliseconds kPatience{4};

}  // namespace

PartStrip::PartStrip(OpenedParts& parts) : parts_(parts) {
    connections_.push_back(parts.listChanged.connect([this] {
        listChanged();
        showCurrent();
    }));
    connections_.push_back(parts.currentChanged.connect([this] {
        if (!hasStepped()) steppedTo_.clear();
        showCurrent();
    }));
    connections_.push_back(decodeTimer_.tick.connect([this] { decodeNext(); }));
}

const PartMark& PartStrip::mark(int index) const {
    static const PartMark kNone;
    static const PartMark kIncluded{includedPicture(), "included"};
    static const PartMark kRefused{refusedPicture(), "not included"};
    static const PartMark kDoubtful{doubtfulPicture(), "in doubt"};
    static const PartMark kFailed{failedPicture(), "cannot be opened"};
    switch (stateOf ? stateOf(parts_.path(index)) : PartState::New) {
        case PartState::Included:
            return kIncluded;
        case PartState::Refused:
            return kRefused;
        case PartState::Doubtful:
            return kDoubtful;
        case PartState::Failed:
            return kFailed;
        case PartState::New:
            break;
    }
    return kNone;
}

std::string PartStrip::tip(int index) const {
    const std::string& what = mark(index).text;
    return parts_.path(index) + (what.empty() ? "" : "\n" + what);
}

std::string PartStrip::description(int index) const {
    const std::string& what = mark(index).text;
    return name(index) + (what.empty() ? "" : ", " + what);
}

void PartStrip::setWidth(int width) {
    const bool first = width_ <= 0;
    width_ = width;
    if (first)
        showCurrent();
    else
        scrollTo(scroll_);
}

void PartStrip::setDisplay(Display display) {
    const bool same = display.unit == display_.unit && display.devicePixels == display_.devicePixels;
    display_ = display;
    if (same) return;
    decoding_.cancel();
    pictures_.clear();
    decoded_.clear();
    showCurrent();
}

ScrollState PartStrip::scroll() const noexcept {
    const int content = static_cast<int>(std::ceil(count() * itemWidth()));
    return {scroll_, std::max(content - width_, 0), std::max(width_, 1), static_cast<int>(itemWidth())};
}

void PartStrip::scrollTo(int position) {
    scroll_ = std::clamp(position, 0, scroll().most);
    look();
}

void PartStrip::look() {
    decodeTimer_.setEnabled(missingPicture() >= 0);
    changed();
}

void PartStrip::showCurrent() {
    bringIntoView(current());
}

void PartStrip::bringIntoView(int index) {
    if (index >= 0 && width_ > 0) {
        const ViewBox place = itemPlace(index);
        if (place.left < 0)
            scroll_ += static_cast<int>(std::floor(place.left));
        else if (place.right() > width_)
            scroll_ += static_cast<int>(std::ceil(place.right())) - width_;
    }
    scrollTo(scroll_);
}

ViewBox PartStrip::itemPlace(int index) const {
    return {index * itemWidth() - scroll_, 0, itemWidth(), kItemHeight * display_.unit};
}

int PartStrip::partAt(double x) const {
    const int index = static_cast<int>(std::floor((x + scroll_) / itemWidth()));
    return index >= 0 && index < count() ? index : -1;
}

ViewBox PartStrip::pictureIn(const engine::GreyImage& picture, int width, int height) {
    if (picture.empty()) return {};
    const double scale = std::min(double(width) / picture.width(), double(height) / picture.height());
    const int wide = std::clamp(static_cast<int>(picture.width() * scale + 1e-6), 1, width);
    const int high = std::clamp(static_cast<int>(picture.height() * scale + 1e-6), 1, height);
    return {double((width - wide) / 2), double((height - high) / 2), double(wide), double(high)};
}

void PartStrip::choose(int index) {
    if (index != current()) parts_.setCurrent(index);
}

void PartStrip::step(Step step) {
    if (count() == 0) return;
    const int last = count() - 1;
    const int index = step == Step::Previous ? std::max(current() - 1, 0)
                      : step == Step::Next   ? std::min(current() + 1, last)
                      : step == Step::First  ? 0
                                             : last;
    steppedTo_ = parts_.path(index);
    choose(index);
}

bool PartStrip::hasStepped() const {
    return current() >= 0 && parts_.path(current()) == steppedTo_;
}

const engine::GreyImage* PartStrip::picture(int index) const {
    const auto found = pictures_.find(parts_.path(index));
    return found == pictures_.end() ? nullptr : &found->second;
}

// The first one in view, -1 when there is none.
int PartStrip::missingPicture() const {
    if (width_ <= 0) return -1;
    for (int index = std::max(partAt(0), 0); index < count() && itemPlace(index).left < width_; ++index)
        if (!picture(index)) return index;
    return -1;
}

void PartStrip::decodeNext() {
    if (!decoding_.busy()) {
        const int index = missingPicture();
        if (index < 0) return look();
        const double side = kPictureWidth * display_.unit * display_.devicePixels;
        decoding_.start([this, path = parts_.path(index),
                         make = parts_.thumbnailWork(index, static_cast<int>(std::lround(side)))](
                            const std::stop_token&) -> NewestWork::Delivery {
            return [this, path, picture = make()]() mutable {
                pictures_[path] = std::move(picture);
                decoded_.push_back(path);
            };
        });
    }
    if (!decoding_.deliver(kPatience)) return;
    if (decoded_.size() > kKeptPictures) {
        pictures_.erase(decoded_.front());
        decoded_.pop_front();
    }
    look();
}

}  // namespace dravik::trainer
