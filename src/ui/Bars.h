// Progress bar, status bar with keyed panels, and up-down control.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ui/Widget.h"

namespace dravik::ui {

// 0 to 100; values outside are cut.
class ProgressBar : public Widget {
  public:
    explicit ProgressBar(std::string name)
        : Widget(WidgetKind::ProgressBar, std::move(name), kButtonFaceColor, kWindowTextColor) {}

    float value() const noexcept { return value_; }
    void setValue(float percent);

  private:
    float value_ = 0;
};

class StatusBar;

class StatusPanel {
  public:
    StatusPanel(StatusBar& bar, std::string key, std::string text, int width, bool stretches)
        : key(std::move(key)), width(width), stretches(stretches), bar_(bar), text_(std::move(text)) {}

    const std::string key;
    const int width;       // least width in twips
    const bool stretches;  // takes the spare width

    const std::string& text() const noexcept { return text_; }
    const std::string& toolTip() const noexcept { return toolTip_; }
    void setText(std::string text);
    void setToolTip(std::string toolTip);

  private:
    StatusBar& bar_;
    std::string text_;
    std::string toolTip_;
};

class StatusBar : public Widget {
  public:
    explicit StatusBar(std::string name)
        : Widget(WidgetKind::StatusBar, std::move(name), kButtonFaceColor, kWindowTextColor) {}

    StatusPanel& add(std::string key, std::string text, int width, bool stretches = false);
    // Raises Subscript out of range (9) for an unknown key.
    StatusPanel& panel(std::string_view key);
    const std::vector<std::unique_ptr<StatusPanel>>& panels() const noexcept { return panels_; }

  private:
    std::vector<std::unique_ptr<StatusPanel>> panels_;
};

class UpDown : public Widget {
  public:
    UpDown(std::string name, int minimum, int maximum, int increment)
        : Widget(WidgetKind::UpDown, std::move(name), kButtonFaceColor, kWindowTextColor),
          minimum(minimum),
          maximum(maximum),
          increment(increment),
          value_(minimum) {}

    const int minimum;
    const int maximum;
    const int increment;

    int value() const noexcept { return value_; }
    // Cut to the range; fires valueChanged when it differs.
    void setValue(int value);

    Signal<> valueChanged;

  private:
    int value_;
};

}  // namespace dravik::ui
