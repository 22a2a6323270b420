#include "qt/Peers.h"

namespace dravik::qt {

QWidget* makeView(ui::Widget& model, QWidget* parent) {
    switch (model.kind()) {
        case ui::WidgetKind::Label:
            return makeLabel(static_cast<ui::Label&>(model), parent);
        case ui::WidgetKind::TextBox:
            return makeTextBox(static_cast<ui::TextBox&>(model), parent);
        case ui::WidgetKind::Button:
            return makeButton(static_cast<ui::Button&>(model), parent);
        case ui::WidgetKind::CheckBox:
            return makeCheckBox(static_cast<ui::CheckBox&>(model), parent);
        case ui::WidgetKind::OptionButton:
            return makeOptionButton(static_cast<ui::OptionButton&>(model), parent);
        case ui::WidgetKind::ComboBox:
            return makeComboBox(static_cast<ui::ComboBox&>(model), parent);
        case ui::WidgetKind::ListBox:
            return makeListBox(static_cast<ui::ListBox&>(model), parent);
        case ui::WidgetKind::Frame:
            return makeFrame(static_cast<ui::Frame&>(model), parent);
        case ui::WidgetKind::ProgressBar:
            return makeProgressBar(static_cast<ui::ProgressBar&>(model), parent);
        case ui::WidgetKind::StatusBar:
            return makeStatusBar(static_cast<ui::StatusBar&>(model), parent);
        case ui::WidgetKind::Toolbar:
            return makeToolbar(static_cast<ui::Toolbar&>(model), parent);
        case ui::WidgetKind::UpDown:
            return makeUpDown(static_cast<ui::UpDown&>(model), parent);
        case ui::WidgetKind::Grid:
            return makeGrid(static_cast<ui::Grid&>(model), parent);
        case ui::WidgetKind::Chart:
            return makeChart(static_cast<ui::Chart&>(model), parent);
        case ui::WidgetKind::Form:
            return makeFormPage(static_cast<ui::Form&>(model), parent);
    }
    return nullptr;
}

}  // namespace dravik::qt
