// The boxes of the characters as the operator corrects them: one is selected, and can be split, joined with
// the next, moved, sized and removed, and new ones are drawn. The boxes are always in reading order.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/scene/GivenCharacters.h"
#include "trainer/window/BoxHandles.h"
#include "trainer/window/ViewKey.h"

namespace dravik::trainer {

// What a correction did, for the labels, which go along: the characters that had been at `at` and the next
// `removed` ones are `added` ones now.
struct BoxChange {
    std::string words;  // "split of a character"
    std::size_t at = 0;
    std::size_t removed = 0;
    std::size_t added = 0;
};

class BoxEditor {
  public:
    // The selected box stays selected where it is still there.
    void setBoxes(std::vector<engine::CharacterBox> boxes);
    const std::vector<engine::CharacterBox>& boxes() const noexcept { return boxes_; }
    // -1 for none.
    int selected() const noexcept { return selected_; }
    void select(int index);

    // Where a box is best cut, in pixels from its left side.
    std::function<float(const engine::RotatedBox&)> bestCut;
    // New characters stand at this angle where there are no others, in degrees.
    float usualAngle = 0;
    // In pixels; new characters stand inside of the image.
    int imageWidth = 0, imageHeight = 0;

    // Each corrects the boxes and says how; false when it cannot be done.
    bool split();
    bool join();
    bool remove();
    // A character as large as the selected one behind it, else the proposed one; further on in its line until
    // it covers no other, or before it where the image ends. Over others where there is no room.
    bool add(const engine::RotatedBox& proposal);
    std::function<void(const BoxChange&)> corrected;

    // The mouse, in image pixels: takes hold of a box within reach, else draws a new one.
    void press(ImagePoint place, float reach);
    void dragTo(ImagePoint place);
    void release();
    void cancel();
    bool isDragging() const noexcept { return part_ != BoxPart::None; }
    // The box that is being drawn or dragged.
    const engine::RotatedBox& draggedBox() const noexcept { return draggedBox_; }
    bool isDrawing() const noexcept { return isDragging() && draws_; }
    BoxPart partAt(ImagePoint place, float reach) const;

    // Tab, Home and End select; arrows select too, move with Ctrl and size with Shift; S splits, J joins, A
    // adds, Delete removes. Whether the key did anything.
    bool key(const ViewKey& key, float step, const engine::RotatedBox& proposal);

  private:
    int boxAt(ImagePoint place, float reach) const;
    bool replace(std::size_t at, std::size_t removed, const std::vector<engine::RotatedBox>& added,
                 const char* words);
    bool resize(const engine::RotatedBox& box, const char* words);
    std::size_t insert(const engine::RotatedBox& box);

    std::vector<engine::CharacterBox> boxes_;
    int selected_ = -1;
    BoxPart part_ = BoxPart::None;
    bool draws_ = false;
    ImagePoint from_;
    engine::RotatedBox heldBox_, draggedBox_;
};

}  // namespace dravik::trainer
