// One function per kind of widget makes its peer.
#pragma once

#include <memory>

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
#include "windows/win32/Peer.h"

namespace dravik::win32 {

class CellBoard;

std::shared_ptr<Peer> make(ui::Label& model, Page& page);
std::shared_ptr<Peer> makeCell(ui::Label& model, Page& page, CellBoard& board);
std::shared_ptr<Peer> make(ui::TextBox& model, Page& page);
std::shared_ptr<Peer> make(ui::Button& model, Page& page);
std::shared_ptr<Peer> make(ui::CheckBox& model, Page& page);
std::shared_ptr<Peer> make(ui::OptionButton& model, Page& page);
std::shared_ptr<Peer> make(ui::ComboBox& model, Page& page);
std::shared_ptr<Peer> make(ui::ListBox& model, Page& page);
std::shared_ptr<Peer> make(ui::Frame& model, Page& page);
std::shared_ptr<Peer> make(ui::ProgressBar& model, Page& page);
std::shared_ptr<Peer> make(ui::StatusBar& model, Page& page);
std::shared_ptr<Peer> make(ui::Toolbar& model, Page& page);
std::shared_ptr<Peer> make(ui::UpDown& model, Page& page);
std::shared_ptr<Peer> make(ui::Grid& model, Page& page);
std::shared_ptr<Peer> make(ui::Chart& model, Page& page);
std::shared_ptr<Peer> make(ui::PictureGrid& model, Page& page);

}  // namespace dravik::win32
