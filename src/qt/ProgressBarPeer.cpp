#include <QProgressBar>
#include <cmath>

#include "qt/Peer.h"
#include "qt/Peers.h"

namespace dravik::qt {
namespace {

constexpr int kSteps = 1000;

class ProgressBarPeer : public PeerOf<ui::ProgressBar, QProgressBar> {
  public:
    ProgressBarPeer(ui::ProgressBar& model, QProgressBar& view) : PeerOf(model, view) {
        view.setRange(0, kSteps);
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Value)
            view_.setValue(static_cast<int>(std::lround(model_.value() * kSteps / 100)));
        else
            Peer::show(change);
    }
};

}  // namespace

QWidget* makeProgressBar(ui::ProgressBar& model, QWidget* parent) {
    auto* view = new QProgressBar(parent);
    (new ProgressBarPeer(model, *view))->start();
    return view;
}

}  // namespace dravik::qt
