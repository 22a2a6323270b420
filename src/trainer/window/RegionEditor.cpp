#include "trainer/window/RegionEditor.h"

#include <algorithm>

#include "engine/segmentation/SegmentationSettings.h"

namespace dravik::trainer {
namespace {

constexpr float kLeastSide = 8;
constexpr float kTurnStep = 1;  // degrees

}  // namespace

void RegionEditor::setRegion(const std::optional<engine::RotatedBox>& region) {
    if (isDragging()) return;
    region_ = region;
}

BoxPart RegionEditor::partAt(ImagePoint place, const Reach& reach) const {
    return region_ ? trainer::partAt(*region_, place, reach.handle, reach.turnAbove) : BoxPart::None;
}

void RegionEditor::press(ImagePoint place, const Reach& reach) {
    before_ = region_;
    from_ = place;
    part_ = partAt(place, reach);
    draws_ = part_ == BoxPart::None;
    if (draws_) part_ = BoxPart::Inside;
}

void RegionEditor::dragTo(ImagePoint place) {
    if (!isDragging()) return;
    if (draws_)
        region_ = boxBetween(from_, place, before_ ? before_->angle : 0);
    else
        region_ = dragged(*before_, part_, from_, place, kLeastSide);
}

bool RegionEditor::release() {
    if (!isDragging()) return false;
    part_ = BoxPart::None;
    if (region_ && (std::min(region_->width, region_->height) < kLeastSide || !engine::isRegion(*region_)))
        region_ = before_;
    return region_ != before_;
}

void RegionEditor::cancel() {
    if (isDragging()) region_ = before_;
    part_ = BoxPart::None;
}

bool RegionEditor::key(const ViewKey& key, const Reach& reach, const engine::RotatedBox& proposal) {
    if (isDragging()) return false;
    const auto before = region_;
    if (!region_) {
        if (key.name != ViewKey::Name::Enter) return false;
        region_ = proposal;
        return true;
    }
    if (key.name == ViewKey::Name::Delete) {
        region_.reset();
        return true;
    }
    if (!key.isArrow()) return false;
    engine::RotatedBox& box = *region_;
    const float dx = reach.step * static_cast<float>(key.across()),
                dy = reach.step * static_cast<float>(key.down());
    if (key.ctrl) {
        box.angle = usualAngle(box.angle + kTurnStep * static_cast<float>(key.across() + 90 * key.down()));
    } else if (key.shift) {
        box = dragged(box, BoxPart::BottomRight, box.toImage({}), box.toImage({dx, dy}), kLeastSide);
    } else {
        box.centreX += dx;
        box.centreY += dy;
    }
    if (!engine::isRegion(box)) region_ = before;
    return region_ != before;
}

}  // namespace dravik::trainer
