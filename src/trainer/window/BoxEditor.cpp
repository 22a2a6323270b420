#include "trainer/window/BoxEditor.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace dravik::trainer {
namespace {

using engine::CharacterBox;
using engine::RotatedBox;

// In image pixels.
constexpr float kLeastSide = 2, kLeastDrawn = 3;
// A box stands in a line when its middle is not further from the line's than so much of the line's height.
constexpr float kInLine = 0.6f;
// Of its width a new character goes on at a time until it is beside the others.
constexpr float kStep = 0.05f;
// Of their common width or height boxes may cover each other so much and still stand beside each other.
constexpr float kTouching = 0.05f;

// A line of the boxes, as it lies at its own angle.
struct Line {
    RotatedBox frame;  // only its angle
    float middle = 0, height = 0;
    std::size_t first = 0, count = 0;
};

std::vector<Line> linesOf(const std::vector<CharacterBox>& boxes) {
    std::vector<Line> lines;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (i == 0 || boxes[i].line != boxes[i - 1].line) {
            Line& line = lines.emplace_back();
            line.frame.angle = boxes[i].place.angle;
            line.first = i;
        }
        Line& line = lines.back();
        line.middle += line.frame.toOwn({boxes[i].place.centreX, boxes[i].place.centreY}).y;
        line.height += boxes[i].place.height;
        ++line.count;
    }
    for (Line& line : lines) {
        line.middle /= static_cast<float>(line.count);
        line.height /= static_cast<float>(line.count);
    }
    return lines;
}

bool covers(const RotatedBox& box, const RotatedBox& other) {
    const ImagePoint from = box.toOwn({other.centreX, other.centreY});
    constexpr float kHalf = 0.5f * (1 - kTouching);
    return std::abs(from.x) < kHalf * (box.width + other.width) &&
           std::abs(from.y) < kHalf * (box.height + other.height);
}

}  // namespace

void BoxEditor::setBoxes(std::vector<CharacterBox> boxes) {
    if (boxes == boxes_) return;
    cancel();
    if (boxes.size() != boxes_.size()) selected_ = -1;
    boxes_ = std::move(boxes);
}

void BoxEditor::select(int index) {
    selected_ = index >= 0 && index < static_cast<int>(boxes_.size()) ? index : -1;
}

// In the line that it stands in, else in one of its own. Returns its place.
std::size_t BoxEditor::insert(const RotatedBox& box) {
    const std::vector<Line> lines = linesOf(boxes_);
    CharacterBox added{box, 0};
    std::size_t place = 0;
    for (const Line& line : lines) {
        const ImagePoint own = line.frame.toOwn({box.centreX, box.centreY});
        const float below = own.y - line.middle;
        if (std::abs(below) <= kInLine * std::max(line.height, box.height)) {
            added.line = boxes_[line.first].line;
            place = line.first;
            while (place < line.first + line.count &&
                   line.frame.toOwn({boxes_[place].place.centreX, boxes_[place].place.centreY}).x < own.x)
                ++place;
            boxes_.insert(boxes_.begin() + static_cast<std::ptrdiff_t>(place), added);
            return place;
        }
        if (below < 0) break;
        place = line.first + line.count;
        added.line = boxes_[line.first].line + 1;
    }
    for (std::size_t i = place; i < boxes_.size(); ++i) ++boxes_[i].line;
    boxes_.insert(boxes_.begin() + static_cast<std::ptrdiff_t>(place), added);
    return place;
}

// The characters from `at` on by others, the first of which is selected then. Boxes that stay beside each
// other are one change; a box that goes elsewhere leaves its place first.
bool BoxEditor::replace(std::size_t at, std::size_t removed, const std::vector<RotatedBox>& added,
                        const char* words) {
    const auto first = boxes_.begin() + static_cast<std::ptrdiff_t>(at);
    boxes_.erase(first, first + static_cast<std::ptrdiff_t>(removed));
    std::vector<std::size_t> places;
    places.reserve(added.size());
    for (const RotatedBox& box : added) places.push_back(insert(box));
    // Lines are numbered without gaps.
    int line = -1, before = -1;
    for (CharacterBox& box : boxes_) {
        if (std::exchange(before, box.line) != box.line || line < 0) ++line;
        box.line = line;
    }
    selected_ = places.empty() ? std::min(static_cast<int>(at), static_cast<int>(boxes_.size()) - 1)
                               : static_cast<int>(places.front());
    if (!corrected) return true;
    if (places.empty()) {
        corrected({words, at, removed, 0});
    } else if (removed > 0 && places.front() != at) {
        corrected({words, at, removed, 0});
        corrected({words, places.front(), 0, places.size()});
    } else {
        corrected({words, places.front(), removed, places.size()});
    }
    return true;
}

bool BoxEditor::split() {
    if (selected_ < 0 || isDragging()) return false;
    const RotatedBox box = boxes_[static_cast<std::size_t>(selected_)].place;
    if (box.width < 2 * kLeastSide) return false;
    const float middle = bestCut ? bestCut(box) : 0.5f * box.width;
    const float cut = std::clamp(middle, kLeastSide, box.width - kLeastSide);
    return replace(static_cast<std::size_t>(selected_), 1, {slice(box, 0, cut), slice(box, cut, box.width)},
                   "split of a character");
}

bool BoxEditor::join() {
    const auto at = static_cast<std::size_t>(selected_);
    if (selected_ < 0 || isDragging() || at + 1 >= boxes_.size() || boxes_[at].line != boxes_[at + 1].line)
        return false;
    return replace(at, 2, {boxAround(boxes_[at].place, boxes_[at + 1].place)}, "join of two characters");
}

bool BoxEditor::remove() {
    if (selected_ < 0 || isDragging()) return false;
    return replace(static_cast<std::size_t>(selected_), 1, {}, "removal of a character");
}

bool BoxEditor::add(const RotatedBox& proposal) {
    if (isDragging()) return false;
    const RotatedBox start = selected_ < 0 ? proposal : boxes_[static_cast<std::size_t>(selected_)].place;
    RotatedBox box = start;
    const auto isTaken = [&](const CharacterBox& other) { return covers(box, other.place); };
    const auto isSeen = [&] {
        return box.centreX >= 0 && box.centreX < static_cast<float>(imageWidth) && box.centreY >= 0 &&
               box.centreY < static_cast<float>(imageHeight);
    };
    for (const float step : {kStep, -kStep}) {
        box = start;
        while (isSeen() && std::any_of(boxes_.begin(), boxes_.end(), isTaken)) {
            const ImagePoint beside = box.toImage({step * box.width, 0});
            box.centreX = beside.x;
            box.centreY = beside.y;
        }
        if (isSeen()) break;
    }
    if (!isSeen()) box = start;
    return replace(boxes_.size(), 0, {box}, "addition of a character");
}

bool BoxEditor::resize(const RotatedBox& box, const char* words) {
    const auto at = static_cast<std::size_t>(selected_);
    return box != boxes_[at].place && replace(at, 1, {box}, words);
}

// Of several the smallest.
int BoxEditor::boxAt(ImagePoint place, float reach) const {
    int found = -1;
    float area = 0;
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        const RotatedBox& box = boxes_[i].place;
        const bool isNear = static_cast<int>(i) == selected_
                                ? trainer::partAt(box, place, reach) != BoxPart::None
                                : box.contains(place);
        if (!isNear || (found >= 0 && box.width * box.height >= area)) continue;
        found = static_cast<int>(i);
        area = box.width * box.height;
    }
    return found;
}

BoxPart BoxEditor::partAt(ImagePoint place, float reach) const {
    const int index = boxAt(place, reach);
    return index < 0 ? BoxPart::None
                     : trainer::partAt(boxes_[static_cast<std::size_t>(index)].place, place, reach);
}

void BoxEditor::press(ImagePoint place, float reach) {
    from_ = place;
    // The sides of the selected box come before what lies beside it.
    if (selected_ >= 0) {
        part_ = trainer::partAt(boxes_[static_cast<std::size_t>(selected_)].place, place, reach);
        if (part_ == BoxPart::Inside && boxAt(place, 0) != selected_) part_ = BoxPart::None;
    }
    if (part_ == BoxPart::None) {
        select(boxAt(place, reach));
        if (selected_ >= 0) part_ = BoxPart::Inside;
    }
    draws_ = selected_ < 0;
    if (draws_) {
        part_ = BoxPart::Inside;
        heldBox_ = boxBetween(place, place, boxes_.empty() ? usualAngle : boxes_.front().place.angle);
    } else {
        heldBox_ = boxes_[static_cast<std::size_t>(selected_)].place;
    }
    draggedBox_ = heldBox_;
}

void BoxEditor::dragTo(ImagePoint place) {
    if (!isDragging()) return;
    draggedBox_ = draws_ ? boxBetween(from_, place, heldBox_.angle)
                         : dragged(heldBox_, part_, from_, place, kLeastSide);
}

void BoxEditor::release() {
    if (!isDragging()) return;
    const BoxPart part = std::exchange(part_, BoxPart::None);
    if (!draws_) {
        resize(draggedBox_, part == BoxPart::Inside ? "move of a character" : "size of a character");
    } else if (std::min(draggedBox_.width, draggedBox_.height) >= kLeastDrawn) {
        replace(boxes_.size(), 0, {draggedBox_}, "addition of a character");
    }
}

void BoxEditor::cancel() {
    part_ = BoxPart::None;
}

bool BoxEditor::key(const ViewKey& key, float step, const RotatedBox& proposal) {
    using Name = ViewKey::Name;
    if (isDragging()) return false;
    const int last = static_cast<int>(boxes_.size()) - 1;
    if (key.isArrow() && (key.shift || key.ctrl)) {
        if (selected_ < 0) return false;
        const RotatedBox& box = boxes_[static_cast<std::size_t>(selected_)].place;
        const ImagePoint to =
            box.toImage({step * static_cast<float>(key.across()), step * static_cast<float>(key.down())});
        const BoxPart part = key.shift ? BoxPart::BottomRight : BoxPart::Inside;
        return resize(dragged(box, part, {box.centreX, box.centreY}, to, kLeastSide),
                      key.shift ? "size of a character" : "move of a character");
    }
    const bool backwards = (key.name == Name::Tab && key.shift) || key.across() < 0 || key.down() < 0;
    if (key.name == Name::Tab || key.isArrow()) {
        const int next = selected_ < 0 ? (backwards ? last : 0) : selected_ + (backwards ? -1 : 1);
        // Tab leaves the view at the ends.
        if (next < 0 || next > last) return key.isArrow();
        select(next);
        return true;
    }
    if (key.ctrl) return false;
    switch (key.name) {
        case Name::Home:
            select(0);
            return true;
        case Name::End:
            select(last);
            return true;
        case Name::Delete:
            return remove();
        default:
            return key.letter == 'S'   ? split()
                   : key.letter == 'J' ? join()
                                       : key.letter == 'A' && add(proposal);
    }
}

}  // namespace dravik::trainer
