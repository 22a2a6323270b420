#include "ui/PictureGrid.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace dravik::ui {

void PictureGrid::setSource(std::shared_ptr<const PictureSource> source) {
    source_ = std::move(source);
    selected_.assign(static_cast<std::size_t>(count()), false);
    current_ = anchor_ = count() > 0 ? 0 : -1;
    scroll_ = std::clamp(scroll_, 0, scroll().most);
    changed(Change::Items);
}

bool PictureGrid::isSelected(int index) const {
    return index >= 0 && index < count() && selected_[static_cast<std::size_t>(index)];
}

std::vector<int> PictureGrid::selected() const {
    std::vector<int> result;
    for (int index = 0; index < count(); ++index)
        if (isSelected(index)) result.push_back(index);
    return result;
}

void PictureGrid::select(const std::vector<int>& indexes) {
    selected_.assign(static_cast<std::size_t>(count()), false);
    for (const int index : indexes) selected_[static_cast<std::size_t>(index)] = true;
    if (!indexes.empty()) {
        current_ = anchor_ = indexes.front();
        reveal(current_);
    }
    changed(Change::Selection);
}

void PictureGrid::selectAll() {
    selected_.assign(static_cast<std::size_t>(count()), true);
    tell();
}

void PictureGrid::selectRange(int from, int to) {
    selected_.assign(static_cast<std::size_t>(count()), false);
    const auto [first, last] = std::minmax(from, to);
    std::fill(selected_.begin() + first, selected_.begin() + last + 1, true);
}

void PictureGrid::choose(int index, int shift) {
    if (index < 0 || index >= count()) return;
    if (shift & kShiftMask) {
        selectRange(anchor_, index);
    } else if (shift & kCtrlMask) {
        selected_[static_cast<std::size_t>(index)].flip();
        anchor_ = index;
    } else {
        selectRange(index, index);
        anchor_ = index;
    }
    current_ = index;
    reveal(index);
    tell();
}

void PictureGrid::move(KeyMove move, int shift) {
    if (count() == 0) return;
    const int page = std::max(static_cast<int>(height_ / itemHeight()), 1) * columns();
    const int steps[] = {-1, 1, -columns(), columns(), -page, page, -count(), count()};
    const int wanted = current_ + steps[static_cast<std::size_t>(move)];
    // Up in the first row and down in the last one stay where they are.
    const bool staysInColumn = move == KeyMove::Up || move == KeyMove::Down;
    if (staysInColumn && (wanted < 0 || wanted >= count())) return;
    const int index = std::clamp(wanted, 0, count() - 1);
    if ((shift & (kShiftMask | kCtrlMask)) != kCtrlMask) return choose(index, shift & kShiftMask);
    current_ = anchor_ = index;
    reveal(index);
    tell();
}

void PictureGrid::tell() {
    changed(Change::Selection);
    selectionChanged();
}

void PictureGrid::setView(int width, int height, double unit) {
    width_ = width;
    height_ = height;
    unit_ = unit;
    scrollTo(scroll_);
}

int PictureGrid::columns() const {
    return std::max(static_cast<int>(width_ / itemWidth()), 1);
}

PictureGrid::Scroll PictureGrid::scroll() const {
    const int rows = (count() + columns() - 1) / columns();
    const int content = static_cast<int>(std::ceil(rows * itemHeight()));
    return {scroll_, std::max(content - height_, 0), std::max(height_, 1), static_cast<int>(itemHeight())};
}

void PictureGrid::scrollTo(int position) {
    scroll_ = std::clamp(position, 0, scroll().most);
    changed(Change::Selection);
}

void PictureGrid::reveal(int index) {
    const Place place = itemPlace(index);
    if (place.top < 0)
        scroll_ += static_cast<int>(std::floor(place.top));
    else if (place.top + place.height > height_)
        scroll_ += static_cast<int>(std::ceil(place.top + place.height)) - height_;
    scroll_ = std::clamp(scroll_, 0, scroll().most);
}

PictureGrid::Place PictureGrid::itemPlace(int index) const {
    const int row = index / columns();
    return {index % columns() * itemWidth(), row * itemHeight() - scroll_, itemWidth(), itemHeight()};
}

int PictureGrid::itemAt(double x, double y) const {
    const int column = static_cast<int>(std::floor(x / itemWidth()));
    const int row = static_cast<int>(std::floor((y + scroll_) / itemHeight()));
    if (x < 0 || column >= columns() || row < 0) return -1;
    const int index = row * columns() + column;
    return index < count() ? index : -1;
}

PictureGrid::Range PictureGrid::seen() const {
    const int first = static_cast<int>(scroll_ / itemHeight()) * columns();
    const int end = static_cast<int>(std::ceil((scroll_ + height_) / itemHeight())) * columns();
    return {std::min(first, count()), std::min(end, count())};
}

}  // namespace dravik::ui
