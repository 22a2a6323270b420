#include "trainer/window/PartViewModel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace dravik::trainer {
namespace {

// In 1/96 inch.
constexpr double kHandleSide = 7, kHandleReach = 6, kTurnAbove = 22;

// In units: a mouse that moves less between pressing and releasing clicks.
constexpr double kClick = 3;

}  // namespace

PartViewModel::PartViewModel() {
    boxes.bestCut = [this](const engine::RotatedBox& box) {
        return image() ? engine::bestCut(*image(), box) : 0.5f * box.width;
    };
}

void PartViewModel::setImage(const engine::GreyImage* image, std::string message) {
    message_ = std::move(message);
    marked_.reset();
    cancelDrag();
    placeImage(image);
    boxes.imageWidth = image ? image->width() : 0;
    boxes.imageHeight = image ? image->height() : 0;
    imageChanged();
}

void PartViewModel::setCharacters(std::vector<LabelledCharacter> characters, int mismatch, int pointedAt) {
    std::vector<engine::CharacterBox> places;
    places.reserve(characters.size());
    for (const LabelledCharacter& one : characters) places.push_back({one.box, one.place.line});
    boxes.setBoxes(std::move(places));
    marks_.setCharacters(std::move(characters), mismatch, pointedAt);
    changed();
}

void PartViewModel::setReading(std::vector<engine::ReadCharacter> reading) {
    marks_.setReading(std::move(reading));
    changed();
}

void PartViewModel::setShowsReading(bool shows) {
    marks_.setShowsReading(shows);
    changed();
}

void PartViewModel::setRegion(const std::optional<engine::RotatedBox>& region) {
    region_.setRegion(region);
    changed();
}

void PartViewModel::setMarked(std::optional<engine::Region> place) {
    marked_ = place;
    if (marked_ && image())
        scrollTo(ViewBox{imagePlace().left + marked_->left * scale(),
                         imagePlace().top + marked_->top * scale(), marked_->width() * scale(),
                         marked_->height() * scale()});
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

RegionEditor::Reach PartViewModel::reach() const {
    const auto pixels = [this](double length) { return static_cast<float>(units(length) / scale()); };
    return {pixels(kHandleReach), pixels(kTurnAbove), std::max(1.0f, std::round(pixels(1)))};
}

bool PartViewModel::press(ViewPoint place) {
    if (!image()) return false;
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
    const int character = marks_.characterAt(place);
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
    if (!image()) return false;
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
    if (mode == ViewMode::Region || !image()) {
        const ViewPoint corner = toImage({0, 0});
        const auto within = [](double from, double to, int most) {
            return static_cast<float>(std::min<double>(to, most) - std::max(from, 0.0));
        };
        const float wide = image() ? within(corner.x, 2 * middle.x - corner.x, image()->width()) : 100,
                    high = image() ? within(corner.y, 2 * middle.y - corner.y, image()->height()) : 100;
        return {x, y, std::max(16.0f, 0.6f * wide), std::max(16.0f, 0.4f * high), 0};
    }
    if (!boxes.boxes().empty()) {
        engine::RotatedBox box = boxes.boxes().front().place;
        box.centreX = x;
        box.centreY = y;
        return box;
    }
    const float high = std::max(8.0f, static_cast<float>(image()->height()) / 12);
    return {x, y, 0.65f * high, high, boxes.usualAngle};
}

ViewCursor PartViewModel::cursorAt(ViewPoint place) const {
    if (!image()) return ViewCursor::Arrow;
    if (mode_ == ViewMode::Look)
        return dragging_ && moved_              ? ViewCursor::ClosedHand
               : marks_.characterAt(place) >= 0 ? ViewCursor::Arrow
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

std::vector<ViewFrame> PartViewModel::frames() const {
    if (!image()) return {};
    const int selected = mode_ == ViewMode::Boxes ? boxes.selected() : -1;
    const auto dragged = boxes.isDragging() ? std::optional(boxes.draggedBox()) : std::nullopt;
    std::vector<ViewFrame> frames = marks_.frames(selected, dragged);
    if (selected >= 0)
        addHandles(dragged ? *dragged : boxes.boxes()[static_cast<std::size_t>(selected)].place, false,
                   frames);
    if (boxes.isDrawing()) frames.push_back(frameOf(boxes.draggedBox(), kLabelledColor));
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

std::vector<ViewTag> PartViewModel::tags() const {
    return image() ? marks_.tags() : std::vector<ViewTag>();
}

}  // namespace dravik::trainer
