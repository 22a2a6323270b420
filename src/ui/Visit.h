// A widget as what it is: the one place that knows all kinds of widgets that stand in a form.
#pragma once

#include "base/Failure.h"
#include "ui/Bars.h"
#include "ui/Button.h"
#include "ui/Chart.h"
#include "ui/Form.h"
#include "ui/Grid.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/PictureGrid.h"
#include "ui/TextBox.h"
#include "ui/Toolbar.h"

namespace dravik::ui {

// Calls the visitor with the widget as its own class and returns what that returns, the same type for every
// class. Raises Invalid procedure call (5) for a form, which stands in none.
template <class Visitor>
auto visit(Widget& widget, const Visitor& visitor) {
    switch (widget.kind()) {
        case WidgetKind::Label:
            return visitor(static_cast<Label&>(widget));
        case WidgetKind::TextBox:
            return visitor(static_cast<TextBox&>(widget));
        case WidgetKind::Button:
            return visitor(static_cast<Button&>(widget));
        case WidgetKind::CheckBox:
            return visitor(static_cast<CheckBox&>(widget));
        case WidgetKind::OptionButton:
            return visitor(static_cast<OptionButton&>(widget));
        case WidgetKind::ComboBox:
            return visitor(static_cast<ComboBox&>(widget));
        case WidgetKind::ListBox:
            return visitor(static_cast<ListBox&>(widget));
        case WidgetKind::Frame:
            return visitor(static_cast<Frame&>(widget));
        case WidgetKind::ProgressBar:
            return visitor(static_cast<ProgressBar&>(widget));
        case WidgetKind::StatusBar:
            return visitor(static_cast<StatusBar&>(widget));
        case WidgetKind::Toolbar:
            return visitor(static_cast<Toolbar&>(widget));
        case WidgetKind::UpDown:
            return visitor(static_cast<UpDown&>(widget));
        case WidgetKind::Grid:
            return visitor(static_cast<Grid&>(widget));
        case WidgetKind::Chart:
            return visitor(static_cast<Chart&>(widget));
        case WidgetKind::PictureGrid:
            return visitor(static_cast<PictureGrid&>(widget));
        case WidgetKind::Form:
            break;
    }
    throw Failure(RuntimeError::InvalidProcedureCall);
}

}  // namespace dravik::ui
