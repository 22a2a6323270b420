#include "ui/Widget.h"

#include <utility>

namespace dravik::ui {

Widget::Widget(WidgetKind kind, std::string name, Color backColor, Color foreColor)
    : kind_(kind), name_(std::move(name)), backColor_(backColor), foreColor_(foreColor) {}

void Widget::setEnabled(bool enabled) {
    assign(enabled_, enabled, Change::Enabled);
}

void Widget::setVisible(bool visible) {
    assign(visible_, visible, Change::Visible);
}

void Widget::setBold(bool bold) {
    assign(bold_, bold, Change::Appearance);
}

void Widget::setBackColor(Color color) {
    assign(backColor_, color, Change::Appearance);
}

void Widget::setForeColor(Color color) {
    assign(foreColor_, color, Change::Appearance);
}

void Widget::setToolTip(std::string toolTip) {
    assign(toolTip_, std::move(toolTip), Change::ToolTip);
}

void Widget::setAccessibleName(std::string name) {
    assign(accessibleName_, std::move(name), Change::Name);
}

void Widget::setFocus() {
    changed(Change::Focus);
}

}  // namespace dravik::ui
