// The region of the image in which characters are looked for, as the operator draws, moves, sizes and turns
// it with the mouse or with keys.
#pragma once

#include <optional>

#include "trainer/window/BoxHandles.h"
#include "trainer/window/ViewKey.h"

namespace dravik::trainer {

class RegionEditor {
  public:
    // In image pixels: how near to a handle is on it, how far above the box it is turned, what a key moves.
    struct Reach {
        float handle = 6;
        float turnAbove = 24;
        float step = 1;
    };

    void setRegion(const std::optional<engine::RotatedBox>& region);
    const std::optional<engine::RotatedBox>& region() const noexcept { return region_; }

    // A new region is drawn where nothing of the old one is in reach.
    void press(ImagePoint place, const Reach& reach);
    void dragTo(ImagePoint place);
    // Whether the region is another one now; what is too small to be one leaves that which there was.
    bool release();
    bool isDragging() const noexcept { return part_ != BoxPart::None; }
    // Puts back what there was before the drag.
    void cancel();
    BoxPart partAt(ImagePoint place, const Reach& reach) const;

    // Arrows move, with Shift they size, with Ctrl they turn; Delete takes the region away, Enter makes one
    // of `proposal` where there is none. Whether the key did anything.
    bool key(const ViewKey& key, const Reach& reach, const engine::RotatedBox& proposal);

  private:
    std::optional<engine::RotatedBox> region_, before_;
    BoxPart part_ = BoxPart::None;
    bool draws_ = false;
    ImagePoint from_;
};

}  // namespace dravik::trainer
