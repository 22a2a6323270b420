// A single line of editable text.
#pragma once

#include <functional>
#include <string>

#include "ui/Widget.h"

namespace dravik::ui {

class TextBox : public Widget {
  public:
    explicit TextBox(std::string name, std::string text = {})
        : Widget(WidgetKind::TextBox, std::move(name), kWindowColor, kWindowTextColor),
          text_(std::move(text)) {}

    const std::string& text() const noexcept { return text_; }
    // Fires textChanged when the text differs, whether the operator typed it or a procedure set it.
    void setText(std::string text) {
        if (assign(text_, std::move(text), Change::Caption)) textChanged();
    }

    // What the operator made of the text. What came in at once, pasted and not typed, goes through
    // `pasteFilter`, which takes away what cannot belong there; without one it stays as it is.
    void edit(std::string text);
    std::function<std::string(std::string)> pasteFilter;

    // A locked box is shown but not edited by the operator.
    bool locked() const noexcept { return locked_; }
    void setLocked(bool locked) { assign(locked_, locked, Change::Enabled); }

    // Characters; a length past the end selects to the end.
    void select(int start, int length) {
        selectionStart_ = start;
        selectionLength_ = length;
        changed(Change::Selection);
    }
    int selectionStart() const noexcept { return selectionStart_; }
    int selectionLength() const noexcept { return selectionLength_; }

    Signal<> textChanged;

  private:
    std::string text_;
    bool locked_ = false;
    int selectionStart_ = 0;
    int selectionLength_ = 0;
};

}  // namespace dravik::ui
