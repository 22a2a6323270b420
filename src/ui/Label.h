// A text on the screen; in the character overview a coloured cell.
#pragma once

#include <string>

#include "ui/Widget.h"

namespace dravik::ui {

class Label : public Widget {
  public:
    enum class Alignment { Start, Center, End };

    explicit Label(std::string name, std::string caption = {})
        : Widget(WidgetKind::Label, std::move(name), kButtonFaceColor, kWindowTextColor),
          caption_(std::move(caption)) {}

    const std::string& caption() const noexcept { return caption_; }
    void setCaption(std::string caption) { assign(caption_, std::move(caption), Change::Caption); }

    // An "&" in the caption marks the access key of the next control; off for captions that are data.
    bool usesMnemonic() const noexcept { return usesMnemonic_; }
    void setUsesMnemonic(bool uses) { assign(usesMnemonic_, uses, Change::Appearance); }

    Alignment alignment() const noexcept { return alignment_; }
    void setAlignment(Alignment alignment) { assign(alignment_, alignment, Change::Appearance); }

    // Points; 0 is the form's own size.
    int fontSize() const noexcept { return fontSize_; }
    void setFontSize(int points) { assign(fontSize_, points, Change::Appearance); }

    // A cell shows its back colour and has a border. It takes the focus and opens its menu by the menu key
    // too, unless it only explains what others show.
    bool isCell() const noexcept { return isCell_; }
    void setCell(bool cell, bool takesFocus = true) {
        takesFocus_ = takesFocus;
        assign(isCell_, cell, Change::Appearance);
    }
    bool takesFocus() const noexcept { return isCell_ && takesFocus_; }
    // In small letters in a cell's corner; "" for nothing.
    const std::string& figure() const noexcept { return figure_; }
    void setFigure(std::string figure) { assign(figure_, std::move(figure), Change::Caption); }

  private:
    std::string caption_;
    bool usesMnemonic_ = true;
    Alignment alignment_ = Alignment::Start;
    int fontSize_ = 0;
    bool isCell_ = false;
    bool takesFocus_ = false;
    std::string figure_;
};

}  // namespace dravik::ui
