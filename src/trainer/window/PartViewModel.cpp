#include "trainer/window/PartViewModel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
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
constexpr double kHandleSide = 7, kHandleReach = 6, kTurnAbove = 22;
constexpr double kConfidenceHeight = 3;

// In units.
constexpr double kBoxGap = 2;
constexpr double kBeyondView = 40;  // a box so far outside can still have a tag inside
constexpr double kClick = 3;        // a mouse that moves less between pressing and releasing clicks

// Readings are held against labels by their places in images of at most so many characters.
constexpr std::size_t kMostMatched = 2000;

constexpr char kDiffers[] = "\u2260";

ScrollState scrollState(int position, double content, int room) {
    return {position, std::max(0, static_cast<int>(std::ceil(content)) - room), std::max(room, 1),
            std::max(room / kLinesOfPage, 1)};
}

}  // namespace

PartViewModel::PartViewModel() {
    boxes.bestCut = [this](const engine::RotatedBox& box) {
        return image_ ? engine::bestCut(*image_, box) : 0.5f * box.width;
    };
}

void PartViewModel::setImage(const engine::GreyImage* image, std::string message) {
    image_ = image && !image->empty() ? image : nullptr;
    message_ = std::move(message);
    marked_.reset();
    cancelDrag();
    imageChanged();
    settle();
}

void PartViewModel::setCharacters(std::vector<LabelledCharacter> characters, int mismatch, int pointedAt) {
    characters_ = std::move(characters);
    mismatch_ = mismatch;
    pointedAt_ = pointedAt;
    std::vector<engine::CharacterBox> places;
    for (const LabelledCharacter& one : characters_) places.push_back({one.box, one.place.line});
    boxes.setBoxes(std::move(places));
    matchReading();
    changed();
}

void PartViewModel::setReading(std::vector<engine::ReadCharacter> reading) {
    reading_ = std::move(reading);
    matchReading();
    changed();
}

// A reading may have a character more or fewer than there are boxes.
void PartViewModel::matchReading() {
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

void PartViewModel::setShowsReading(bool shows) {
    showsReading_ = shows;
    changed();
}

void PartViewModel::setRegion(std::optional<engine::RotatedBox> region) {
    region_.setRegion(std::move(region));
    changed();
}

void PartViewModel::setMarked(std::optional<engine::Region> place) {
    marked_ = place;
    if (marked_ && image_)
        scrollTo(ViewBox{imagePlace().left + marked_->left * scale_, imagePlace().top + marked_->top * scale_,
                         marked_->width() * scale_, marked_->height() * scale_});
    changed();
}

void PartViewModel::setMode(ViewMode mode) {
    if (mode == mode_) return;
    cancelDrag();
    mode_ = mode;
    boxes.select(-1);
    modeChanged();
    changed();
    if (mode != ViewMode::Look) focusWanted();
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

// Brings a place of the view into it.
void PartViewModel::scrollTo(const ViewBox& box) {
    const auto by = [](double from, double to, int room) {
        if (from >= 0 && to <= room) return 0;
        return static_cast<int>(std::lround(0.5 * (from + to) - 0.5 * room));
    };
    scrollBy(by(box.left, box.right(), width_), by(box.top, box.bottom(), height_));
}

RegionEditor::Reach PartViewModel::reach() const {
    const auto pixels = [this](double length) { return static_cast<float>(units(length) / scale_); };
    return {pixels(kHandleReach), pixels(kTurnAbove), std::max(1.0f, std::round(pixels(1)))};
}

bool PartViewModel::press(ViewPoint place) {
    if (!image_) return false;
    dragging_ = true;
    moved_ = false;
    pressedAt_ = dragFrom_ = place;
    const ViewPoint on = toImage(place);
    const ImagePoint pixel{static_cast<float>(on.x), static_cast<float>(on.y)};
    if (mode_ == ViewMode::Region) region_.press(pixel, reach());
    if (mode_ == ViewMode::Boxes) boxes.press(pixel, reach().handle);
    changed();
    return true;
}

void PartViewModel::moveTo(ViewPoint place) {
    if (!dragging_) return;
    moved_ = moved_ || std::hypot(place.x - pressedAt_.x, place.y - pressedAt_.y) > units(kClick);
    const ViewPoint from = std::exchange(dragFrom_, place);
    if (!moved_) return;
    if (mode_ == ViewMode::Look) {
        scrollBy(static_cast<int>(std::lround(from.x - place.x)),
                 static_cast<int>(std::lround(from.y - place.y)));
        return;
    }
    const ViewPoint on = toImage(place);
    const ImagePoint pixel{static_cast<float>(on.x), static_cast<float>(on.y)};
    region_.dragTo(pixel);
    boxes.dragTo(pixel);
    changed();
}

void PartViewModel::release(ViewPoint place) {
    if (!std::exchange(dragging_, false)) return;
    const bool drawn = region_.release();
    boxes.release();
    if (drawn) regionDrawn();
    changed();
    if (mode_ == ViewMode::Look && !moved_) pickAt(place);
}

void PartViewModel::pickAt(ViewPoint place) {
    const int character = characterAt(place);
    if (character < 0) return;
    if (mode_ == ViewMode::Boxes) boxes.select(character);
    changed();
    characterPicked(character, place);
}

void PartViewModel::cancelDrag() {
    dragging_ = false;
    region_.cancel();
    boxes.cancel();
}

bool PartViewModel::key(const ViewKey& key) {
    using Name = ViewKey::Name;
    if (!image_) return false;
    if (key.name == Name::Escape) {
        const bool stops = dragging_;
        if (!stops && mode_ == ViewMode::Look) return false;
        cancelDrag();
        if (!stops) setMode(ViewMode::Look);
        changed();
        return true;
    }
    bool done = false;
    switch (mode_) {
        case ViewMode::Look:
            if (!key.isArrow() || key.ctrl || key.shift) return false;
            scrollBy(key.across() * horizontal().line, key.down() * vertical().line);
            return true;
        case ViewMode::Region:
            done = region_.key(key, reach(), proposal(mode_));
            if (done) regionDrawn();
            break;
        case ViewMode::Boxes: {
            const int selected = boxes.selected();
            if (selected >= 0 && (key.name == Name::Menu || key.name == Name::Enter)) {
                const ViewBox box = boxOf(boxes.boxes()[static_cast<std::size_t>(selected)].place);
                characterPicked(selected, {box.left, box.bottom()});
                return true;
            }
            done = boxes.key(key, reach().step, proposal(mode_));
            if (done && boxes.selected() >= 0)
                scrollTo(boxOf(boxes.boxes()[static_cast<std::size_t>(boxes.selected())].place));
            break;
        }
    }
    if (done) changed();
    return done;
}

engine::RotatedBox PartViewModel::proposal(ViewMode mode) const {
    const ViewPoint middle = toImage(centre());
    const float x = static_cast<float>(middle.x), y = static_cast<float>(middle.y);
    if (mode == ViewMode::Region || !image_) {
        const ViewPoint corner = toImage({0, 0});
        const auto within = [](double from, double to, int most) {
            return static_cast<float>(std::min<double>(to, most) - std::max(from, 0.0));
        };
        const float wide = image_ ? within(corner.x, 2 * middle.x - corner.x, image_->width()) : 100,
                    high = image_ ? within(corner.y, 2 * middle.y - corner.y, image_->height()) : 100;
        return {x, y, std::max(16.0f, 0.6f * wide), std::max(16.0f, 0.4f * high), 0};
    }
    if (!boxes.boxes().empty()) {
        engine::RotatedBox box = boxes.boxes().front().place;
        box.centreX = x;
        box.centreY = y;
        return box;
    }
    const float high = std::max(8.0f, static_cast<float>(image_->height()) / 12);
    return {x, y, 0.65f * high, high, boxes.usualAngle};
}

ViewCursor PartViewModel::cursorAt(ViewPoint place) const {
    if (!image_) return ViewCursor::Arrow;
    if (mode_ == ViewMode::Look)
        return dragging_ && moved_       ? ViewCursor::ClosedHand
               : characterAt(place) >= 0 ? ViewCursor::Arrow
                                         : ViewCursor::OpenHand;
    const ViewPoint on = toImage(place);
    const ImagePoint pixel{static_cast<float>(on.x), static_cast<float>(on.y)};
    const bool isRegion = mode_ == ViewMode::Region;
    const BoxPart part = isRegion ? region_.partAt(pixel, reach()) : boxes.partAt(pixel, reach().handle);
    if (part == BoxPart::None) return ViewCursor::Cross;
    if (part == BoxPart::Inside) return ViewCursor::Move;
    if (part == BoxPart::Turn) return ViewCursor::OpenHand;
    const float angle = isRegion                ? region_.region()->angle
                        : boxes.boxes().empty() ? 0
                                                : boxes.boxes().front().place.angle;
    // Eighths of a turn from upwards, to the nearest.
    const int eighth = static_cast<int>(part) - static_cast<int>(BoxPart::Top) +
                       static_cast<int>(std::lround(angle / 45)) + 16;
    constexpr std::array<ViewCursor, 4> kCursors = {ViewCursor::SizeDown, ViewCursor::SizeRising,
                                                    ViewCursor::SizeAcross, ViewCursor::SizeFalling};
    return kCursors[static_cast<std::size_t>(eighth % 4)];
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

ViewPoint PartViewModel::toView(engine::RotatedBox::Point place) const {
    const ViewBox image = imagePlace();
    return {image.left + static_cast<double>(place.x) * scale_,
            image.top + static_cast<double>(place.y) * scale_};
}

// Upright, around the box.
ViewBox PartViewModel::boxOf(const engine::RotatedBox& box) const {
    double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;
    for (const ViewPoint& corner : frameOf(box, 0).corners) {
        left = std::min(left, corner.x);
        right = std::max(right, corner.x);
        top = std::min(top, corner.y);
        bottom = std::max(bottom, corner.y);
    }
    return {left, top, right - left, bottom - top};
}

ViewFrame PartViewModel::frameOf(const engine::RotatedBox& box, ui::Color color) const {
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

void PartViewModel::addHandles(const engine::RotatedBox& box, bool turns,
                               std::vector<ViewFrame>& frames) const {
    const auto add = [&](engine::RotatedBox::Point place) {
        const ViewPoint at = toView(place);
        const double half = units(kHandleSide) / 2;
        ViewFrame handle;
        handle.corners = {{{at.x - half, at.y - half},
                           {at.x + half, at.y - half},
                           {at.x + half, at.y + half},
                           {at.x - half, at.y + half}}};
        handle.color = kRegionColor;
        handle.filled = true;
        frames.push_back(handle);
    };
    for (const ImagePoint& place : handlePlaces(box)) add(place);
    if (!turns) return;
    const float above = reach().turnAbove;
    add(turnPlace(box, above));
    // The line that the handle hangs on.
    const ViewPoint from = toView(turnPlace(box, 0)), to = toView(turnPlace(box, above));
    ViewFrame line;
    line.corners = {{from, to, to, from}};
    line.color = kRegionColor;
    frames.push_back(line);
}

bool PartViewModel::isSeen(const ViewBox& box) const {
    return box.intersects(ViewBox{0, 0, double(width_), double(height_)}.grownBy(kBeyondView));
}

std::vector<ViewFrame> PartViewModel::frames() const {
    std::vector<ViewFrame> frames;
    if (!image_) return frames;
    const bool corrects = mode_ == ViewMode::Boxes;
    for (std::size_t i = 0; i < characters_.size(); ++i) {
        const LabelledCharacter& character = characters_[i];
        const bool isSelected = corrects && static_cast<int>(i) == boxes.selected();
        const engine::RotatedBox& box = isSelected && boxes.isDragging() ? boxes.draggedBox() : character.box;
        if (!isSeen(boxOf(box))) continue;
        const bool warns = (mismatch_ != 0 && character.label.empty()) || !character.doubt.empty();
        ViewFrame frame = frameOf(box, warns ? kMismatchColor : kLabelledColor);
        frame.dashed = warns;
        frame.heavy = warns || isSelected || static_cast<int>(i) == pointedAt_;
        frames.push_back(frame);
        if (isSelected) addHandles(box, false, frames);
    }
    if (boxes.isDrawing()) frames.push_back(frameOf(boxes.draggedBox(), kLabelledColor));
    if (showsReading_) {
        // A bar above each box tells how sure the font is of what it reads there.
        for (std::size_t i = 0; i < reading_.size(); ++i) {
            const int character = characterOfRead_[i];
            if (character < 0) continue;
            engine::RotatedBox bar = characters_[static_cast<std::size_t>(character)].box;
            const float sure = static_cast<float>(std::clamp(reading_[i].confidence, 0.0, 1.0));
            const float high = static_cast<float>(units(kConfidenceHeight) / scale_);
            const auto middle =
                bar.toImage({0.5f * (sure - 1) * bar.width,
                             -0.5f * (bar.height + high) - static_cast<float>(kBoxGap / scale_)});
            bar = {middle.x, middle.y, sure * bar.width, high, bar.angle};
            ViewFrame frame =
                frameOf(bar, reading_[i].confidence < kWeakConfidence ? kMismatchColor : kReadColor);
            const auto corners = bar.corners();
            for (std::size_t k = 0; k < corners.size(); ++k) frame.corners[k] = toView(corners[k]);
            frame.filled = true;
            if (isSeen(boxOf(bar))) frames.push_back(frame);
        }
    }
    if (marked_) {
        const auto middle = [](int from, int to) { return 0.5f * static_cast<float>(from + to); };
        ViewFrame frame =
            frameOf({middle(marked_->left, marked_->right), middle(marked_->top, marked_->bottom),
                     static_cast<float>(marked_->width()), static_cast<float>(marked_->height()), 0},
                    kRegionColor);
        frame.heavy = true;
        frames.push_back(frame);
    }
    if (const auto& region = region_.region()) {
        ViewFrame frame = frameOf(*region, kRegionColor);
        frame.dashed = true;
        frame.heavy = mode_ == ViewMode::Region;
        frames.push_back(frame);
        if (mode_ == ViewMode::Region) addHandles(*region, true, frames);
    }
    return frames;
}

ViewTag PartViewModel::tagOf(const engine::RotatedBox& box, bool above, std::string text,
                             ui::Color color) const {
    const auto scaled = [this](double length) { return static_cast<int>(std::lround(units(length))); };
    const auto corners = frameOf(box, color).corners;
    const ViewPoint& a = corners[above ? 0 : 3];
    const ViewPoint& b = corners[above ? 1 : 2];
    const ViewPoint& inner = corners[above ? 3 : 0];
    const double length = std::max(1e-6, std::hypot(a.x - inner.x, a.y - inner.y));
    ViewTag tag;
    tag.from = {(a.x + b.x) / 2, (a.y + b.y) / 2};
    tag.away = {(a.x - inner.x) / length, (a.y - inner.y) / length};
    tag.text = std::move(text);
    tag.color = color;
    tag.textHeight = std::clamp(static_cast<int>(length * 0.45), scaled(9), scaled(14));
    return tag;
}

std::vector<ViewTag> PartViewModel::tags() const {
    std::vector<ViewTag> tags;
    if (!image_) return tags;
    for (const LabelledCharacter& character : characters_) {
        const bool lacks = mismatch_ != 0 && character.label.empty();
        const bool warns = lacks || !character.doubt.empty();
        if ((!lacks && character.label.empty()) || !isSeen(boxOf(character.box))) continue;
        tags.push_back(tagOf(character.box, false, lacks ? "?" : character.label,
                             warns ? kMismatchColor : kLabelledColor));
    }
    if (mismatch_ > 0 && !characters_.empty()) {
        ViewTag tag = tagOf(characters_.back().box, false, "+" + std::to_string(mismatch_), kMismatchColor);
        tag.from.x += boxOf(characters_.back().box).width + units(kSurplusGap);
        if (isSeen({tag.from.x, tag.from.y, 1, 1})) tags.push_back(tag);
    }
    if (!showsReading_) return tags;
    for (std::size_t i = 0; i < reading_.size(); ++i) {
        if (characterOfRead_[i] < 0) continue;
        const LabelledCharacter& character = characters_[static_cast<std::size_t>(characterOfRead_[i])];
        if (!isSeen(boxOf(character.box))) continue;
        const std::string text = engine::shownCharacter(reading_[i]);
        const bool differs = !character.label.empty() && text != character.label;
        const bool weak = reading_[i].confidence < kWeakConfidence;
        ViewTag tag = tagOf(character.box, true, (differs ? kDiffers : "") + text,
                            weak || differs ? kMismatchColor : kReadColor);
        tag.outlined = !differs;
        const double clear = units(kConfidenceHeight) + kBoxGap;
        tag.from.x += clear * tag.away.x;
        tag.from.y += clear * tag.away.y;
        tags.push_back(std::move(tag));
    }
    return tags;
}

ViewBox PartViewModel::tagPlace(const ViewTag& tag, double textWidth, double textHeight) const {
    const double wide = std::max(textWidth + units(kTagPadding), textHeight * 0.8);
    const double out = units(kTagGap) + (std::abs(tag.away.x) * wide + std::abs(tag.away.y) * textHeight) / 2;
    return {tag.from.x + out * tag.away.x - wide / 2, tag.from.y + out * tag.away.y - textHeight / 2, wide,
            textHeight};
}

int PartViewModel::characterAt(ViewPoint place) const {
    int found = -1;
    float area = 0;
    const ViewPoint on = toImage(place);
    for (std::size_t i = 0; image_ && i < characters_.size(); ++i) {
        engine::RotatedBox box = characters_[i].box;
        box.width += static_cast<float>(2 * kBoxGap / scale_);
        box.height += static_cast<float>(2 * kBoxGap / scale_);
        if (!box.contains({static_cast<float>(on.x), static_cast<float>(on.y)}) ||
            (found >= 0 && box.width * box.height >= area))
            continue;
        found = static_cast<int>(i);
        area = box.width * box.height;
    }
    return found;
}

ViewBox PartViewModel::characterBox(int character) const {
    return boxOf(characters_.at(static_cast<std::size_t>(character)).box);
}

const engine::ReadCharacter* PartViewModel::readingOf(int character) const {
    const auto read = std::find(characterOfRead_.begin(), characterOfRead_.end(), character);
    return character < 0 || read == characterOfRead_.end()
               ? nullptr
               : &reading_[static_cast<std::size_t>(read - characterOfRead_.begin())];
}

std::string PartViewModel::tipAt(ViewPoint place) const {
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

}  // namespace dravik::trainer
