#include "ui/ListControls.h"

#include <algorithm>
#include <utility>

#include "base/Failure.h"

namespace dravik::ui {

ListControl::ListControl(WidgetKind kind, std::string name, std::vector<std::string> items)
    : Widget(kind, std::move(name), kWindowColor, kWindowTextColor), items_(std::move(items)) {}

void ListControl::clear() {
    setItems({});
}

void ListControl::addItem(std::string item) {
    items_.push_back(std::move(item));
    changed(Change::Items);
}

void ListControl::setItems(std::vector<std::string> items) {
    items_ = std::move(items);
    listIndex_ = -1;
    changed(Change::Items);
}

void ListControl::setListIndex(int index) {
    if (index < -1 || index >= count()) throw Failure(RuntimeError::InvalidPropertyValue);
    assign(listIndex_, index, Change::Selection);
    if (index >= 0) click();
}

std::string ListControl::text() const {
    return listIndex_ < 0 ? std::string() : items_[static_cast<std::size_t>(listIndex_)];
}

void ListControl::setText(const std::string& text) {
    const auto found = std::find(items_.begin(), items_.end(), text);
    if (found == items_.end()) throw Failure(RuntimeError::InvalidPropertyValue);
    setListIndex(static_cast<int>(found - items_.begin()));
}

}  // namespace dravik::ui
