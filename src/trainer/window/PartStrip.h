// The opened parts as a strip of small pictures side by side. A picture is decoded only when it comes into
// view, one at a time, so that thousands of parts open at once.
#pragma once

#include <functional>
#include <list>
#include <string>
#include <unordered_map>

#include "trainer/Labelling.h"
#include "trainer/NewestWork.h"
#include "trainer/OpenedParts.h"
#include "trainer/window/ViewGeometry.h"
#include "ui/Picture.h"
#include "ui/Signal.h"
#include "ui/Timer.h"

namespace dravik::trainer {

constexpr char kStripName[] = "Opened images";  // for screen readers

// What has become of an image: a small picture of its own shape and colour, and the same in words.
struct PartMark {
    ui::Picture picture;  // none for an image that nothing has become of yet
    std::string text;
};

class PartStrip {
  public:
    // In 1/96 inch. An item is a picture with its name below.
    static constexpr int kItemWidth = 116;
    static constexpr int kItemHeight = 82;
    static constexpr int kPictureWidth = 104;
    static constexpr int kPictureHeight = 54;
    static constexpr int kMargin = 6;
    // Of an item in a window that has no more room: the name is cut off.
    static constexpr int kLeastHeight = kPictureHeight + kMargin;

    enum class Step { Previous, Next, First, Last };

    static constexpr int kMarkSide = 16;  // in the picture's right upper corner

    // The parts outlive the strip.
    explicit PartStrip(OpenedParts& parts);
    // Tells what has become of the image of a path; without it nothing has. statesChanged() when it tells
    // something else.
    std::function<PartState(const std::string& path)> stateOf;
    void statesChanged() { changed(); }

    int count() const noexcept { return parts_.count(); }
    int current() const noexcept { return parts_.current(); }
    std::string name(int index) const { return parts_.name(index); }
    const PartMark& mark(int index) const;
    // The path, and what has become of it.
    std::string tip(int index) const;
    // What a screen reader says.
    std::string description(int index) const;

    void setWidth(int width);
    // Pictures of another size than before are decoded anew.
    void setDisplay(Display display);
    ScrollState scroll() const noexcept;
    // Cut to what there is.
    void scrollTo(int position);
    void bringIntoView(int index);

    ViewBox itemPlace(int index) const;
    // -1 beside all of them.
    int partAt(double x) const;
    // Where a picture stands in a box of that size: whole, centred, in its proportions.
    static ViewBox pictureIn(const engine::GreyImage& picture, int width, int height);

    // Makes a part current that is another one; raises Subscript out of range (9) for one that is not there.
    void choose(int index);
    // As the arrow keys, Home and End do it; stays at the ends.
    void step(Step step);
    // The current part was come to by step(): the strip keeps the focus for the next one.
    bool hasStepped() const;

    // Null until it is decoded, empty when it cannot be.
    const engine::GreyImage* picture(int index) const;
    // Ticks while a picture in view is missing, which are decoded one after the other, beside the window.
    ui::Timer& decodeTimer() noexcept { return decodeTimer_; }

    ui::Signal<> listChanged;
    // Anything else that is seen.
    ui::Signal<> changed;

  private:
    double itemWidth() const noexcept { return kItemWidth * display_.unit; }
    int missingPicture() const;
    void decodeNext();
    void showCurrent();
    void look();

    OpenedParts& parts_;
    Display display_;
    int width_ = 0;
    int scroll_ = 0;
    std::string steppedTo_;
    std::unordered_map<std::string, engine::GreyImage> pictures_;  // by path
    std::list<std::string> decoded_;                               // paths, the oldest first
    NewestWork decoding_;
    ui::Timer decodeTimer_{"tmrThumbnails", 5};
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::trainer
