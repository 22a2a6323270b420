// One function per kind of widget: each makes the view and its peer under the given parent.
#pragma once

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

class QWidget;

namespace dravik::qt {

QWidget* make(ui::Label& model, QWidget* parent);
QWidget* make(ui::TextBox& model, QWidget* parent);
QWidget* make(ui::Button& model, QWidget* parent);
QWidget* make(ui::CheckBox& model, QWidget* parent);
QWidget* make(ui::OptionButton& model, QWidget* parent);
QWidget* make(ui::ComboBox& model, QWidget* parent);
QWidget* make(ui::ListBox& model, QWidget* parent);
QWidget* make(ui::Frame& model, QWidget* parent);
QWidget* make(ui::ProgressBar& model, QWidget* parent);
QWidget* make(ui::StatusBar& model, QWidget* parent);
QWidget* make(ui::Toolbar& model, QWidget* parent);
QWidget* make(ui::UpDown& model, QWidget* parent);
QWidget* make(ui::Grid& model, QWidget* parent);
QWidget* make(ui::Chart& model, QWidget* parent);
QWidget* make(ui::PictureGrid& model, QWidget* parent);

}  // namespace dravik::qt
