// The view of the current part: at which scale and place its image stands; the boxes around its found
// characters with the labels that the typed text gives them and what the font reads; the region in which
// characters are looked for. The view tells its size and hands on the operator's mouse and keys, scrolls and
// draws.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/image/GreyImage.h"
#include "trainer/Trainer.h"
#include "trainer/window/BoxEditor.h"
#include "trainer/window/RegionEditor.h"
#include "trainer/window/ViewDrawing.h"
#include "trainer/window/ViewGeometry.h"
#include "trainer/window/ViewKey.h"
#include "ui/Menu.h"
#include "ui/Signal.h"

namespace dravik::trainer {

constexpr char kPartViewName[] = "Part image";  // for screen readers

// What the mouse and the keys do: look at the image, draw the region, or correct the boxes.
enum class ViewMode { Look, Region, Boxes };

class PartViewModel {
  public:
    // In 1/96 inch; what stands below it gives way first.
    static constexpr int kLeastHeight = 200;

    PartViewModel();

    // No image, or an empty one, shows the message instead. The image is borrowed until the next call. It is
    // fitted unless the operator has chosen a scale.
    void setImage(const engine::GreyImage* image, std::string message);
    // `mismatch` as Trainer::mismatch(): characters that lack a label then warn. `pointedAt` is the one that
    // the operator is to look at, -1 for none.
    void setCharacters(std::vector<LabelledCharacter> characters, int mismatch, int pointedAt = -1);
    // What the font reads, in reading order; none where it cannot.
    void setReading(std::vector<engine::ReadCharacter> reading);
    void setShowsReading(bool shows);
    void setRegion(std::optional<engine::RotatedBox> region);
    // A place to look at, in image pixels, which is scrolled into view; gone with the next image.
    void setMarked(std::optional<engine::Region> place);
    // What is seen of the image at once, without scroll bars.
    void setViewport(int width, int height);
    void setDisplay(Display display);

    // Null when there is nothing to show but the message.
    const engine::GreyImage* image() const noexcept { return image_; }
    const std::string& message() const noexcept { return message_; }

    ViewMode mode() const noexcept { return mode_; }
    void setMode(ViewMode mode);

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

    // The left button. False when there is nothing to take hold of.
    bool press(ViewPoint place);
    void moveTo(ViewPoint place);
    void release(ViewPoint place);
    // The drag ends without effect.
    void cancelDrag();
    bool isDragging() const noexcept { return dragging_; }
    // While no mode is on, arrows scroll. Whether the key did anything.
    bool key(const ViewKey& key);
    ViewCursor cursorAt(ViewPoint place) const;

    ViewBox imagePlace() const;
    ViewPoint toImage(ViewPoint place) const;
    ViewPoint toView(engine::RotatedBox::Point place) const;
    // What is drawn over the image, as far as it can be seen: first all frames, then all tags.
    std::vector<ViewFrame> frames() const;
    std::vector<ViewTag> tags() const;
    // Where a tag stands when its text takes so much room.
    ViewBox tagPlace(const ViewTag& tag, double textWidth, double textHeight) const;
    // The found character whose box holds the place; of several the smallest, -1 when there is none.
    int characterAt(ViewPoint place) const;
    ViewBox characterBox(int character) const;
    // What the font reads in the character at the place, and what else it may be; "" for none.
    std::string tipAt(ViewPoint place) const;
    // Of a found character; null when nothing was read there.
    const engine::ReadCharacter* readingOf(int character) const;
    // As a click on the character at the place, if there is one; in any mode.
    void pickAt(ViewPoint place);
    // Shows a menu at a place and returns once it is closed; the view sets it.
    std::function<void(ui::PopupMenu&, ViewPoint)> popUp;
    // A box of the usual size of a character, or a region, in the middle of what is seen.
    engine::RotatedBox proposal(ViewMode mode) const;

    BoxEditor boxes;
    const RegionEditor& region() const noexcept { return region_; }

    ui::Signal<> imageChanged;
    // Anything that is seen, but for the pixels of the image.
    ui::Signal<> changed;
    ui::Signal<> modeChanged;
    // The next keys are for the view.
    ui::Signal<> focusWanted;
    // The operator has drawn, moved, sized, turned or removed the region.
    ui::Signal<> regionDrawn;
    // The operator has clicked a character, or asks for its menu by a key: its number and the place for a
    // menu.
    ui::Signal<int, ViewPoint> characterPicked;

  private:
    ViewBox boxOf(const engine::RotatedBox& box) const;
    ViewFrame frameOf(const engine::RotatedBox& box, ui::Color color) const;
    void addHandles(const engine::RotatedBox& box, bool turns, std::vector<ViewFrame>& frames) const;
    ViewTag tagOf(const engine::RotatedBox& box, bool above, std::string text, ui::Color color) const;
    void matchReading();
    bool isSeen(const ViewBox& box) const;
    double fittingScale() const;
    double units(double length) const { return length * display_.unit; }
    RegionEditor::Reach reach() const;
    void zoomAround(double scale, ViewPoint place);
    void scrollTo(const ViewBox& box);
    ViewPoint centre() const { return {width_ / 2.0, height_ / 2.0}; }
    void settle();

    const engine::GreyImage* image_ = nullptr;
    std::string message_;
    std::vector<LabelledCharacter> characters_;
    int mismatch_ = 0;
    int pointedAt_ = -1;
    std::vector<engine::ReadCharacter> reading_;
    std::vector<int> characterOfRead_;  // -1 where there is none
    bool showsReading_ = true;
    std::optional<engine::Region> marked_;
    RegionEditor region_;
    ViewMode mode_ = ViewMode::Look;
    int width_ = 0;
    int height_ = 0;
    Display display_;
    double scale_ = 1;
    bool fits_ = true;
    int scrollX_ = 0;
    int scrollY_ = 0;
    bool dragging_ = false;
    bool moved_ = false;  // since the button was pressed
    ViewPoint pressedAt_, dragFrom_;
};

}  // namespace dravik::trainer
