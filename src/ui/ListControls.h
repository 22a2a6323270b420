// Lists to choose from: the drop-down list and the list box.
#pragma once

#include <string>
#include <vector>

#include "ui/Widget.h"

namespace dravik::ui {

class ListControl : public Widget {
  public:
    const std::vector<std::string>& items() const noexcept { return items_; }
    int count() const noexcept { return static_cast<int>(items_.size()); }

    void clear();
    void addItem(std::string item);
    void setItems(std::vector<std::string> items);

    // Index of the chosen entry, -1 for none.
    int listIndex() const noexcept { return listIndex_; }
    // Chooses an entry and fires click, even when it is the one already chosen; -1 chooses none and fires
    // nothing. Raises Invalid property value (380) outside -1..count()-1.
    void setListIndex(int index);

    // The chosen entry's text, "" when there is none.
    std::string text() const;
    // Chooses the first entry that equals the text; raises Invalid property value (380) when there is none.
    void setText(const std::string& text);

    Signal<> click;

  protected:
    ListControl(WidgetKind kind, std::string name, std::vector<std::string> items);

  private:
    std::vector<std::string> items_;
    int listIndex_ = -1;
};

class ComboBox : public ListControl {
  public:
    explicit ComboBox(std::string name, std::vector<std::string> items = {})
        : ListControl(WidgetKind::ComboBox, std::move(name), std::move(items)) {}
};

class ListBox : public ListControl {
  public:
    explicit ListBox(std::string name, std::vector<std::string> items = {})
        : ListControl(WidgetKind::ListBox, std::move(name), std::move(items)) {}

    // The operator double-clicked an entry or pressed Enter on it.
    Signal<> doubleClick;
};

}  // namespace dravik::ui
