#include "qt/ChartView.h"
#include "qt/Peer.h"
#include "qt/Peers.h"

namespace dravik::qt {
namespace {

class ChartPeer : public PeerOf<ui::Chart, ChartView> {
  public:
    ChartPeer(ui::Chart& model, ChartView& view) : PeerOf(model, view) {
        connect(&view, &ChartView::menuKeyPressed, this,
                [this] { act([&] { model_.keyDown(ui::kKeyMenu, 0); }); });
    }

    QPointF toView(double x, double y) const override { return view_.toView(x, y); }
    QPointF fromView(QPointF place) const override { return view_.fromView(place); }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Items)
            view_.setContent(model_.scale(), model_.scene());
        else if (change == ui::Change::Selection)
            view_.setPointed(model_.pointed());
        else if (change == ui::Change::Appearance)
            view_.setBackground(model_.backColor());
        else
            Peer::show(change);
    }
};

}  // namespace

QWidget* make(ui::Chart& model, QWidget* parent) {
    return viewWith<ChartPeer>(model, parent);
}

}  // namespace dravik::qt
