#include <QGroupBox>

#include "qt/FormLayout.h"
#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

class FramePeer : public PeerOf<ui::Frame, QGroupBox> {
  public:
    FramePeer(ui::Frame& model, QGroupBox& view)
        : PeerOf(model, view), inside_(*new FormLayout(view, model.layout())) {}

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Caption)
            view_.setTitle(qtText(model_.caption()));
        else if (change != ui::Change::Appearance)  // a font set here would be inherited by everything inside
            Peer::show(change);
    }
    void letGo() override { inside_.detach(); }

  private:
    FormLayout& inside_;
};

}  // namespace

QWidget* make(ui::Frame& model, QWidget* parent) {
    return viewWith<FramePeer>(model, parent);
}

}  // namespace dravik::qt
