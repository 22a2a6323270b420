#include <QGroupBox>

#include "desktop/LayoutBuilder.h"
#include "desktop/Peer.h"
#include "desktop/Peers.h"
#include "desktop/QtConversions.h"

namespace dravik {
namespace {

class FramePeer : public PeerOf<Frame, QGroupBox> {
  public:
    FramePeer(Frame& model, QGroupBox& view) : PeerOf(model, view) { buildLayout(view, model.layout()); }

  protected:
    void show(Change change) override {
        if (change == Change::Caption)
            view_.setTitle(qtText(model_.caption()));
        else if (change != Change::Appearance)  // a font set here would be inherited by everything inside
            Peer::show(change);
    }
};

}  // namespace

QWidget* makeFrame(Frame& model, QWidget* parent) {
    auto* view = new QGroupBox(parent);
    (new FramePeer(model, *view))->start();
    return view;
}

}  // namespace dravik
