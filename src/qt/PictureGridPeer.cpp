#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/PictureGridView.h"

namespace dravik::qt {
namespace {

class PictureGridPeer : public PeerOf<ui::PictureGrid, PictureGridView> {
  public:
    PictureGridPeer(ui::PictureGrid& model, PictureGridView& view) : PeerOf(model, view) {
        view.setModel(&model);
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Items || change == ui::Change::Selection)
            view_.showState();
        else
            Peer::show(change);
    }

    void letGo() override { view_.setModel(nullptr); }
};

}  // namespace

QWidget* make(ui::PictureGrid& model, QWidget* parent) {
    return viewWith<PictureGridPeer>(model, parent);
}

}  // namespace dravik::qt
