// The view of the current part: its image, the boxes around the found characters with their labels and
// readings, and the region in which characters are looked for. The view hands on the operator's mouse and
// keys, scrolls and draws.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/image/GreyImage.h"
#include "trainer/Trainer.h"
#include "trainer/window/BoxEditor.h"
#include "trainer/window/CharacterMarks.h"
#include "trainer/window/PartPlacement.h"
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

class PartViewModel : public PartPlacement {
  public:
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
    void setRegion(const std::optional<engine::RotatedBox>& region);
    // A place to look at, in image pixels, which is scrolled into view; gone with the next image.
    void setMarked(std::optional<engine::Region> place);

    const std::string& message() const noexcept { return message_; }

    ViewMode mode() const noexcept { return mode_; }
    void setMode(ViewMode mode);

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

    // What is drawn over the image, as far as it can be seen: first all frames, then all tags.
    std::vector<ViewFrame> frames() const;
    std::vector<ViewTag> tags() const;
    // Where a tag stands when its text takes so much room.
    ViewBox tagPlace(const ViewTag& tag, double textWidth, double textHeight) const {
        return marks_.tagPlace(tag, textWidth, textHeight);
    }
    // The found character whose box holds the place; of several the smallest, -1 when there is none.
    int characterAt(ViewPoint place) const { return marks_.characterAt(place); }
    ViewBox characterBox(int character) const {
        return boxOf(marks_.characters().at(static_cast<std::size_t>(character)).box);
    }
    // What the font reads in the character at the place, and what else it may be; "" for none.
    std::string tipAt(ViewPoint place) const { return marks_.tipAt(place); }
    // Of a found character; null when nothing was read there.
    const engine::ReadCharacter* readingOf(int character) const { return marks_.readingOf(character); }
    // As a click on the character at the place, if there is one; in any mode.
    void pickAt(ViewPoint place);
    // Shows a menu at a place and returns once it is closed; the view sets it.
    std::function<void(ui::PopupMenu&, ViewPoint)> popUp;
    // A box of the usual size of a character, or a region, in the middle of what is seen.
    engine::RotatedBox proposal(ViewMode mode) const;

    BoxEditor boxes;
    const RegionEditor& region() const noexcept { return region_; }

    ui::Signal<> imageChanged;
    ui::Signal<> modeChanged;
    // The next keys are for the view.
    ui::Signal<> focusWanted;
    // The operator has drawn, moved, sized, turned or removed the region.
    ui::Signal<> regionDrawn;
    // The operator has clicked a character, or asks for its menu by a key: its number and the place for a
    // menu.
    ui::Signal<int, ViewPoint> characterPicked;

  private:
    void addHandles(const engine::RotatedBox& box, bool turns, std::vector<ViewFrame>& frames) const;
    RegionEditor::Reach reach() const;

    std::string message_;
    CharacterMarks marks_{*this};
    std::optional<engine::Region> marked_;
    RegionEditor region_;
    ViewMode mode_ = ViewMode::Look;
    bool dragging_ = false;
    bool moved_ = false;  // since the button was pressed
    ViewPoint pressedAt_, dragFrom_;
};

}  // namespace dravik::trainer
