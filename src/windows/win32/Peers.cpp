#include "windows/win32/Peers.h"

namespace dravik::win32 {

std::shared_ptr<Peer> makePeer(ui::Widget& model, Page& page) {
    switch (model.kind()) {
        case ui::WidgetKind::Label:
            return makeLabel(static_cast<ui::Label&>(model), page);
        case ui::WidgetKind::TextBox:
            return makeTextBox(static_cast<ui::TextBox&>(model), page);
        case ui::WidgetKind::Button:
            return makeButton(static_cast<ui::Button&>(model), page);
        case ui::WidgetKind::CheckBox:
            return makeCheckBox(static_cast<ui::CheckBox&>(model), page);
        case ui::WidgetKind::OptionButton:
            return makeOptionButton(static_cast<ui::OptionButton&>(model), page);
        case ui::WidgetKind::ComboBox:
            return makeComboBox(static_cast<ui::ComboBox&>(model), page);
        case ui::WidgetKind::ListBox:
            return makeListBox(static_cast<ui::ListBox&>(model), page);
        case ui::WidgetKind::Frame:
            return makeFrame(static_cast<ui::Frame&>(model), page);
        case ui::WidgetKind::ProgressBar:
            return makeProgressBar(static_cast<ui::ProgressBar&>(model), page);
        case ui::WidgetKind::StatusBar:
            return makeStatusBar(static_cast<ui::StatusBar&>(model), page);
        case ui::WidgetKind::Toolbar:
            return makeToolbar(static_cast<ui::Toolbar&>(model), page);
        case ui::WidgetKind::UpDown:
            return makeUpDown(static_cast<ui::UpDown&>(model), page);
        case ui::WidgetKind::Grid:
            return makeGrid(static_cast<ui::Grid&>(model), page);
        case ui::WidgetKind::Chart:
            return makeChart(static_cast<ui::Chart&>(model), page);
        case ui::WidgetKind::Form:
            break;
    }
    throw Failure(RuntimeError::InvalidProcedureCall);
}

}  // namespace dravik::win32
