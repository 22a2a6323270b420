#include "activex/win32/Peers.h"

namespace dravik {

std::shared_ptr<Peer> makePeer(Widget& model, Page& page) {
    switch (model.kind()) {
        case WidgetKind::Label:
            return makeLabel(static_cast<Label&>(model), page);
        case WidgetKind::TextBox:
            return makeTextBox(static_cast<TextBox&>(model), page);
        case WidgetKind::Button:
            return makeButton(static_cast<Button&>(model), page);
        case WidgetKind::CheckBox:
            return makeCheckBox(static_cast<CheckBox&>(model), page);
        case WidgetKind::OptionButton:
            return makeOptionButton(static_cast<OptionButton&>(model), page);
        case WidgetKind::ComboBox:
            return makeComboBox(static_cast<ComboBox&>(model), page);
        case WidgetKind::ListBox:
            return makeListBox(static_cast<ListBox&>(model), page);
        case WidgetKind::Frame:
            return makeFrame(static_cast<Frame&>(model), page);
        case WidgetKind::ProgressBar:
            return makeProgressBar(static_cast<ProgressBar&>(model), page);
        case WidgetKind::StatusBar:
            return makeStatusBar(static_cast<StatusBar&>(model), page);
        case WidgetKind::Toolbar:
            return makeToolbar(static_cast<Toolbar&>(model), page);
        case WidgetKind::UpDown:
            return makeUpDown(static_cast<UpDown&>(model), page);
        case WidgetKind::Grid:
            return makeGrid(static_cast<Grid&>(model), page);
        case WidgetKind::Chart:
            return makeChart(static_cast<Chart&>(model), page);
        case WidgetKind::Form:
            break;
    }
    throw Failure(RuntimeError::InvalidProcedureCall);
}

}  // namespace dravik
