// A bar of keyed buttons with pictures.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ui/Picture.h"
#include "ui/Widget.h"

namespace dravik::ui {

class Toolbar;

class ToolButton {
  public:
    enum class Style { Push, Check };

    ToolButton(Toolbar& bar, std::string key, std::string caption, Style style, Picture picture)
        : key(std::move(key)),
          caption(std::move(caption)),
          style(style),
          picture(std::move(picture)),
          bar_(bar) {}

    const std::string key;
    const std::string caption;
    const Style style;
    const Picture picture;

    bool enabled() const noexcept { return enabled_; }
    bool pressed() const noexcept { return pressed_; }
    const std::string& toolTip() const noexcept { return toolTip_; }
    void setEnabled(bool enabled);
    // Fires no click.
    void setPressed(bool pressed);
    void setToolTip(std::string toolTip);

    // As if the operator clicked it: a check button changes its state, then the bar's click is fired. Does
    // nothing while the button or the bar is disabled.
    void press();

  private:
    Toolbar& bar_;
    bool enabled_ = true;
    bool pressed_ = false;
    std::string toolTip_;
};

class Toolbar : public Widget {
  public:
    explicit Toolbar(std::string name)
        : Widget(WidgetKind::Toolbar, std::move(name), kButtonFaceColor, kButtonTextColor) {}

    ToolButton& add(std::string key, std::string caption, ToolButton::Style style = ToolButton::Style::Push,
                    Picture picture = {});
    // Raises Subscript out of range (9) for an unknown key.
    ToolButton& button(std::string_view key);
    const std::vector<std::unique_ptr<ToolButton>>& buttons() const noexcept { return buttons_; }

    Signal<ToolButton&> buttonClick;

  private:
    std::vector<std::unique_ptr<ToolButton>> buttons_;
};

}  // namespace dravik::ui
