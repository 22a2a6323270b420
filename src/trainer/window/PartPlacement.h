// At which scale and place the image of a part stands in its view: fitted, or zoomed and scrolled by the
// operator. The view tells its size.
#pragma once

#include "engine/image/GreyImage.h"
#include "engine/image/RotatedBox.h"
#include "trainer/window/ViewDrawing.h"
#include "trainer/window/ViewGeometry.h"
#include "ui/Signal.h"

namespace dravik::trainer {

class PartPlacement {
  public:
    // In 1/96 inch; what stands below it gives way first.
    static constexpr int kLeastHeight = 200;
    // Between a character and its frame, in units.
    static constexpr double kBoxGap = 2;

    // Null when there is none to show.
    const engine::GreyImage* image() const noexcept { return image_; }
    // What is seen of the image at once, without scroll bars.
    void setViewport(int width, int height);
    void setDisplay(Display display);

    // Units for one image pixel.
    double scale() const noexcept { return scale_; }
    // Display pixels for one image pixel, in per cent, rounded.
    int percent() const noexcept;
    bool fits() const noexcept { return fits_; }
    void fit();
    void zoomIn();
    void zoomOut();
    void showActualSize();
    // Zooms by so many steps, parts of one included, and leaves what is under the place there.
    void zoomBy(double steps, ViewPoint place);

    ScrollState horizontal() const noexcept;
    ScrollState vertical() const noexcept;
    // Cut to what there is.
    void scrollTo(int x, int y);
    void scrollBy(int x, int y) { scrollTo(scrollX_ + x, scrollY_ + y); }
    // Brings a place of the view into it.
    void scrollTo(const ViewBox& box);

    ViewBox imagePlace() const;
    ViewPoint toImage(ViewPoint place) const;
    ViewPoint toView(engine::RotatedBox::Point place) const;
    // A frame around what is there in the image, and the upright box around that.
    ViewFrame frameOf(const engine::RotatedBox& box, ui::Color color) const;
    ViewBox boxOf(const engine::RotatedBox& box) const;
    // In the view, or so near that its tag may be.
    bool isSeen(const ViewBox& box) const;
    // Of a length in 1/96 inch.
    double units(double length) const { return length * display_.unit; }
    ViewPoint centre() const { return {width_ / 2.0, height_ / 2.0}; }

    // Anything that is seen, but for the pixels of the image.
    ui::Signal<> changed;

  protected:
    PartPlacement() = default;
    ~PartPlacement() = default;
    PartPlacement(const PartPlacement&) = delete;
    PartPlacement& operator=(const PartPlacement&) = delete;

    // Borrowed until the next call. It is fitted unless the operator has chosen a scale.
    void placeImage(const engine::GreyImage* image);

  private:
    double fittingScale() const;
    void zoomAround(double scale, ViewPoint place);
    void settle();

    const engine::GreyImage* image_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    Display display_;
    double scale_ = 1;
    bool fits_ = true;
    int scrollX_ = 0;
    int scrollY_ = 0;
};

}  // namespace dravik::trainer
