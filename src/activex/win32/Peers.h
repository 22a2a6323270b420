// One function per kind of widget makes its peer; makePeer() picks the one for a widget's kind, so that a new
// form or control needs no change here.
#pragma once

#include <memory>

#include "activex/win32/Peer.h"
#include "widgets/Bars.h"
#include "widgets/Button.h"
#include "widgets/Chart.h"
#include "widgets/Form.h"
#include "widgets/Grid.h"
#include "widgets/Label.h"
#include "widgets/ListControls.h"
#include "widgets/TextBox.h"
#include "widgets/Toolbar.h"

namespace dravik {

class CellBoard;

std::shared_ptr<Peer> makeLabel(Label& model, Page& page);
std::shared_ptr<Peer> makeCell(Label& model, Page& page, CellBoard& board);
std::shared_ptr<Peer> makeTextBox(TextBox& model, Page& page);
std::shared_ptr<Peer> makeButton(Button& model, Page& page);
std::shared_ptr<Peer> makeCheckBox(CheckBox& model, Page& page);
std::shared_ptr<Peer> makeOptionButton(OptionButton& model, Page& page);
std::shared_ptr<Peer> makeComboBox(ComboBox& model, Page& page);
std::shared_ptr<Peer> makeListBox(ListBox& model, Page& page);
std::shared_ptr<Peer> makeFrame(Frame& model, Page& page);
std::shared_ptr<Peer> makeProgressBar(ProgressBar& model, Page& page);
std::shared_ptr<Peer> makeStatusBar(StatusBar& model, Page& page);
std::shared_ptr<Peer> makeToolbar(Toolbar& model, Page& page);
std::shared_ptr<Peer> makeUpDown(UpDown& model, Page& page);
std::shared_ptr<Peer> makeGrid(Grid& model, Page& page);
std::shared_ptr<Peer> makeChart(Chart& model, Page& page);

// Of every kind but cells. Raises Invalid procedure call (5) for a form inside of a form.
std::shared_ptr<Peer> makePeer(Widget& model, Page& page);

}  // namespace dravik
