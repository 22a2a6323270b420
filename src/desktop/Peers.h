// One function per kind of widget: each makes the view and its peer under the given parent. makeView() picks
// the one for a widget's kind, so that a new form or control needs no change here.
#pragma once

#include "widgets/Bars.h"
#include "widgets/Chart.h"
#include "widgets/Form.h"
#include "widgets/Grid.h"
#include "widgets/Label.h"
#include "widgets/ListControls.h"
#include "widgets/TextBox.h"
#include "widgets/Toolbar.h"

class QWidget;

namespace dravik {

QWidget* makeLabel(Label& model, QWidget* parent);
QWidget* makeTextBox(TextBox& model, QWidget* parent);
QWidget* makeButton(Button& model, QWidget* parent);
QWidget* makeCheckBox(CheckBox& model, QWidget* parent);
QWidget* makeOptionButton(OptionButton& model, QWidget* parent);
QWidget* makeComboBox(ComboBox& model, QWidget* parent);
QWidget* makeListBox(ListBox& model, QWidget* parent);
QWidget* makeFrame(Frame& model, QWidget* parent);
QWidget* makeProgressBar(ProgressBar& model, QWidget* parent);
QWidget* makeStatusBar(StatusBar& model, QWidget* parent);
QWidget* makeToolbar(Toolbar& model, QWidget* parent);
QWidget* makeUpDown(UpDown& model, QWidget* parent);
QWidget* makeGrid(Grid& model, QWidget* parent);
QWidget* makeChart(Chart& model, QWidget* parent);
QWidget* makeFormPage(Form& model, QWidget* parent);

QWidget* makeView(Widget& model, QWidget* parent);

}  // namespace dravik
