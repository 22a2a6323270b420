#include "desktop/ChartView.h"
#include "desktop/Peer.h"
#include "desktop/Peers.h"

namespace dravik {
namespace {

class ChartPeer : public PeerOf<Chart, ChartView> {
  public:
    ChartPeer(Chart& model, ChartView& view) : PeerOf(model, view) {
        connect(&view, &ChartView::pointed, this,
                [this](QPointF place) { fireMouseMove(Qt::NoButton, Qt::NoModifier, place); });
        connect(&view, &ChartView::menuRequested, this,
                [this](QPointF place) { fireMouseDown(kRightButton, Qt::NoModifier, place); });
    }

    QPointF toView(double x, double y) const override { return view_.toView(x, y); }
    QPointF fromView(QPointF place) const override { return view_.fromView(place); }

  protected:
    void show(Change change) override {
        if (change == Change::Items)
            view_.setContent(model_.scale(), model_.scene());
        else if (change == Change::Appearance)
            view_.setBackground(model_.backColor());
        else
            Peer::show(change);
    }
};

}  // namespace

QWidget* makeChart(Chart& model, QWidget* parent) {
    auto* view = new ChartView(parent);
    (new ChartPeer(model, *view))->start();
    return view;
}

}  // namespace dravik
