#include "ui/Bars.h"

#include <algorithm>
#include <utility>

#include "base/Failure.h"

namespace dravik::ui {

void ProgressBar::setValue(float percent) {
    assign(value_, std::clamp(percent, 0.0f, 100.0f), Change::Value);
}

void StatusPanel::setText(std::string text) {
    if (text_ == text) return;
    text_ = std::move(text);
    bar_.changed(Change::Caption);
}

void StatusPanel::setToolTip(std::string toolTip) {
    if (toolTip_ == toolTip) return;
    toolTip_ = std::move(toolTip);
    bar_.changed(Change::ToolTip);
}

StatusPanel& StatusBar::add(std::string key, std::string text, int width, bool stretches) {
    panels_.push_back(
        std::make_unique<StatusPanel>(*this, std::move(key), std::move(text), width, stretches));
    changed(Change::Items);
    return *panels_.back();
}

StatusPanel& StatusBar::panel(std::string_view key) {
    for (const auto& panel : panels_)
        if (panel->key == key) return *panel;
    throw Failure(RuntimeError::SubscriptOutOfRange);
}

void UpDown::setValue(int value) {
    if (assign(value_, std::clamp(value, minimum, maximum), Change::Value)) valueChanged();
}

}  // namespace dravik::ui
