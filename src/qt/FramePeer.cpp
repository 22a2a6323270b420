#include <QGroupBox>

#include "qt/LayoutBuilder.h"
#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

class FramePeer : public PeerOf<ui::Frame, QGroupBox> {
  public:
    FramePeer(ui::Frame& model, QGroupBox& view) : PeerOf(model, view) { buildLayout(view, model.layout()); }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Caption)
            view_.setTitle(qtText(model_.caption()));
        else if (change != ui::Change::Appearance)  // a font set here would be inherited by everything inside
            Peer::show(change);
    }
};

}  // namespace

QWidget* makeFrame(ui::Frame& model, QWidget* parent) {
    auto* view = new QGroupBox(parent);
    (new FramePeer(model, *view))->start();
    return view;
}

}  // namespace dravik::qt
