#include "ui/Menu.h"

#include <utility>

#include "base/Failure.h"

namespace dravik::ui {

MenuItem& PopupMenu::add(std::string itemName, std::string itemCaption) {
    items_.push_back(std::make_unique<MenuItem>(std::move(itemName), std::move(itemCaption)));
    return *items_.back();
}

MenuItem& PopupMenu::item(std::string_view itemName) {
    for (const auto& item : items_)
        if (item->name == itemName) return *item;
    throw Failure(RuntimeError::SubscriptOutOfRange);
}

}  // namespace dravik::ui
