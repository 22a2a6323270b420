// One function per kind of widget: each makes the view and its peer under the given parent. makeView() picks
// the one for a widget's kind, so that a new form or control needs no change here.
#pragma once

#include "ui/Bars.h"
#include "ui/Chart.h"
#include "ui/Form.h"
#include "ui/Grid.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/TextBox.h"
#include "ui/Toolbar.h"

class QWidget;

namespace dravik::qt {

QWidget* makeLabel(ui::Label& model, QWidget* parent);
QWidget* makeTextBox(ui::TextBox& model, QWidget* parent);
QWidget* makeButton(ui::Button& model, QWidget* parent);
QWidget* makeCheckBox(ui::CheckBox& model, QWidget* parent);
QWidget* makeOptionButton(ui::OptionButton& model, QWidget* parent);
QWidget* makeComboBox(ui::ComboBox& model, QWidget* parent);
QWidget* makeListBox(ui::ListBox& model, QWidget* parent);
QWidget* makeFrame(ui::Frame& model, QWidget* parent);
QWidget* makeProgressBar(ui::ProgressBar& model, QWidget* parent);
QWidget* makeStatusBar(ui::StatusBar& model, QWidget* parent);
QWidget* makeToolbar(ui::Toolbar& model, QWidget* parent);
QWidget* makeUpDown(ui::UpDown& model, QWidget* parent);
QWidget* makeGrid(ui::Grid& model, QWidget* parent);
QWidget* makeChart(ui::Chart& model, QWidget* parent);
QWidget* makeFormPage(ui::Form& model, QWidget* parent);

QWidget* makeView(ui::Widget& model, QWidget* parent);

}  // namespace dravik::qt
