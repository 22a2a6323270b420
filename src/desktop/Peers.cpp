#include "desktop/Peers.h"

namespace dravik {

QWidget* makeView(Widget& model, QWidget* parent) {
    switch (model.kind()) {
        case WidgetKind::Label:
            return makeLabel(static_cast<Label&>(model), parent);
        case WidgetKind::TextBox:
            return makeTextBox(static_cast<TextBox&>(model), parent);
        case WidgetKind::Button:
            return makeButton(static_cast<Button&>(model), parent);
        case WidgetKind::CheckBox:
            return makeCheckBox(static_cast<CheckBox&>(model), parent);
        case WidgetKind::OptionButton:
            return makeOptionButton(static_cast<OptionButton&>(model), parent);
        case WidgetKind::ComboBox:
            return makeComboBox(static_cast<ComboBox&>(model), parent);
        case WidgetKind::ListBox:
            return makeListBox(static_cast<ListBox&>(model), parent);
        case WidgetKind::Frame:
            return makeFrame(static_cast<Frame&>(model), parent);
        case WidgetKind::ProgressBar:
            return makeProgressBar(static_cast<ProgressBar&>(model), parent);
        case WidgetKind::StatusBar:
            return makeStatusBar(static_cast<StatusBar&>(model), parent);
        case WidgetKind::Toolbar:
            return makeToolbar(static_cast<Toolbar&>(model), parent);
        case WidgetKind::UpDown:
            return makeUpDown(static_cast<UpDown&>(model), parent);
        case WidgetKind::Grid:
            return makeGrid(static_cast<Grid&>(model), parent);
        case WidgetKind::Chart:
            return makeChart(static_cast<Chart&>(model), parent);
        case WidgetKind::Form:
            return makeFormPage(static_cast<Form&>(model), parent);
    }
    return nullptr;
}

}  // namespace dravik
