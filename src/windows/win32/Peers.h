// One function per kind of widget makes its peer; makePeer() picks the one for a widget's kind, so that a new
// form or control needs no change here.
#pragma once

#include <memory>

#include "ui/Bars.h"
#include "ui/Button.h"
#include "ui/Chart.h"
#include "ui/Form.h"
#include "ui/Grid.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/TextBox.h"
#include "ui/Toolbar.h"
#include "windows/win32/Peer.h"

namespace dravik::win32 {

class CellBoard;

std::shared_ptr<Peer> makeLabel(ui::Label& model, Page& page);
std::shared_ptr<Peer> makeCell(ui::Label& model, Page& page, CellBoard& board);
std::shared_ptr<Peer> makeTextBox(ui::TextBox& model, Page& page);
std::shared_ptr<Peer> makeButton(ui::Button& model, Page& page);
std::shared_ptr<Peer> makeCheckBox(ui::CheckBox& model, Page& page);
std::shared_ptr<Peer> makeOptionButton(ui::OptionButton& model, Page& page);
std::shared_ptr<Peer> makeComboBox(ui::ComboBox& model, Page& page);
std::shared_ptr<Peer> makeListBox(ui::ListBox& model, Page& page);
std::shared_ptr<Peer> makeFrame(ui::Frame& model, Page& page);
std::shared_ptr<Peer> makeProgressBar(ui::ProgressBar& model, Page& page);
std::shared_ptr<Peer> makeStatusBar(ui::StatusBar& model, Page& page);
std::shared_ptr<Peer> makeToolbar(ui::Toolbar& model, Page& page);
std::shared_ptr<Peer> makeUpDown(ui::UpDown& model, Page& page);
std::shared_ptr<Peer> makeGrid(ui::Grid& model, Page& page);
std::shared_ptr<Peer> makeChart(ui::Chart& model, Page& page);

// Of every kind but cells. Raises Invalid procedure call (5) for a form inside of a form.
std::shared_ptr<Peer> makePeer(ui::Widget& model, Page& page);

}  // namespace dravik::win32
