// The view of the current part: at which scale and place its image stands, and the boxes around its found
// characters with the labels that the typed text gives them. The view tells its size, scrolls, drags and
// draws.
#pragma once

#include <string>
#include <vector>

#include "engine/image/GreyImage.h"
#include "trainer/Trainer.h"
#include "trainer/window/ViewGeometry.h"
#include "ui/Color.h"
#include "ui/Signal.h"

namespace dravik::trainer {

constexpr char kPartViewName[] = "Part image";  // for screen readers
constexpr ui::Color kLabelledColor = ui::rgb(0x1E, 0x6F, 0xD9);
constexpr ui::Color kMismatchColor = ui::rgb(0xD8, 0x43, 0x15);

// What is drawn for a found character, or for typed ones that no character is left for.
struct CharacterMark {
    ViewBox box;
    bool framed = true;  // the box itself is drawn
    std::string tag;     // below the box; "" for none
    bool warns = false;  // something is not labelled

    ui::Color color() const noexcept { return warns ? kMismatchColor : kLabelledColor; }
};

class PartViewModel {
  public:
    // In 1/96 inch; what stands below it gives way first.
    static constexpr int kLeastHeight = 200;

    // No image, or an empty one, shows the message instead. The image is borrowed until the next call. It is
    // fitted unless the operator has chosen a scale.
    void setImage(const engine::GreyImage* image, std::string message);
    // `mismatch` as Trainer::mismatch(): characters that lack a label then warn.
    void setCharacters(std::vector<LabelledCharacter> characters, int mismatch);
    // What is seen of the image at once, without scroll bars.
    void setViewport(int width, int height);
    void setDisplay(Display display);

    // Null when there is nothing to show but the message.
    const engine::GreyImage* image() const noexcept { return image_; }
    const std::string& message() const noexcept { return message_; }

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

    // False when there is nothing to drag.
    bool beginDrag(ViewPoint place);
    void dragTo(ViewPoint place);
    void endDrag() noexcept { dragging_ = false; }
    bool isDragging() const noexcept { return dragging_; }

    ViewBox imagePlace() const;
    ViewPoint toImage(ViewPoint place) const;
    // Those that can be seen, in reading order; draw all frames before the tags.
    std::vector<CharacterMark> marks() const;
    // The found character whose box holds the place; of several the smallest, -1 when there is none.
    int characterAt(ViewPoint place) const;

    // Height of the bold letters of a mark's tag, and where the tag stands when its text takes so much room.
    int tagTextHeight(const CharacterMark& mark) const;
    ViewBox tagPlace(const CharacterMark& mark, double textWidth, double textHeight) const;

    ui::Signal<> imageChanged;
    // Anything that is seen, but for the pixels of the image.
    ui::Signal<> changed;

  private:
    ViewBox boxOf(const engine::FoundCharacter& place) const;
    double fittingScale() const;
    void zoomAround(double scale, ViewPoint place);
    ViewPoint centre() const { return {width_ / 2.0, height_ / 2.0}; }
    void settle();

    const engine::GreyImage* image_ = nullptr;
    std::string message_;
    std::vector<LabelledCharacter> characters_;
    int mismatch_ = 0;
    int width_ = 0;
    int height_ = 0;
    Display display_;
    double scale_ = 1;
    bool fits_ = true;
    int scrollX_ = 0;
    int scrollY_ = 0;
    bool dragging_ = false;
    ViewPoint dragFrom_;
};

}  // namespace dravik::trainer
