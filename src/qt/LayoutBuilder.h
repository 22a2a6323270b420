// Turns the portable arrangement of a form into views and Qt layouts. Views are made in the order of the
// tree, which so becomes the order of the Tab key.
#pragma once

class QWidget;

namespace dravik::ui {
struct Layout;
}

namespace dravik::qt {

void buildLayout(QWidget& container, const ui::Layout& layout);

}  // namespace dravik::qt
