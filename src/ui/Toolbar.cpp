#include "ui/Toolbar.h"

#include <utility>

#include "base/Failure.h"

namespace dravik::ui {

void ToolButton::setEnabled(bool enabled) {
    if (std::exchange(enabled_, enabled) != enabled) bar_.changed(Change::Enabled);
}

void ToolButton::setPressed(bool pressed) {
    if (std::exchange(pressed_, pressed) != pressed) bar_.changed(Change::Value);
}

void ToolButton::setToolTip(std::string toolTip) {
    if (toolTip_ == toolTip) return;
    toolTip_ = std::move(toolTip);
    bar_.changed(Change::ToolTip);
}

void ToolButton::press() {
    if (!enabled_ || !bar_.enabled()) return;
    if (style == Style::Check) setPressed(!pressed_);
    bar_.buttonClick(*this);
}

ToolButton& Toolbar::add(std::string key, std::string caption, ToolButton::Style style, Picture picture) {
    buttons_.push_back(
        std::make_unique<ToolButton>(*this, std::move(key), std::move(caption), style, std::move(picture)));
    changed(Change::Items);
    return *buttons_.back();
}

ToolButton& Toolbar::button(std::string_view key) {
    for (const auto& button : buttons_)
        if (button->key == key) return *button;
    throw Failure(RuntimeError::SubscriptOutOfRange);
}

}  // namespace dravik::ui
