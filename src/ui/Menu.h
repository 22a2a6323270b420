// A pop-up menu of named items.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ui/Signal.h"

namespace dravik::ui {

class MenuItem {
  public:
    MenuItem(std::string name, std::string caption) : name(std::move(name)), caption(std::move(caption)) {}

    const std::string name;
    std::string caption;  // "-" is a separator; "&" marks the access key
    bool enabled = true;

    bool isSeparator() const noexcept { return caption == "-"; }

    Signal<> click;
};

class PopupMenu {
  public:
    PopupMenu(std::string name, std::string caption) : name(std::move(name)), caption(std::move(caption)) {}

    const std::string name;
    const std::string caption;

    MenuItem& add(std::string itemName, std::string itemCaption);
    // Raises Subscript out of range (9) for an unknown name.
    MenuItem& item(std::string_view itemName);
    const std::vector<std::unique_ptr<MenuItem>>& items() const noexcept { return items_; }

  private:
    std::vector<std::unique_ptr<MenuItem>> items_;
};

}  // namespace dravik::ui
