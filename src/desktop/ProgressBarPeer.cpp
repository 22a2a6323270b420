#include <QProgressBar>
#include <cmath>

#include "desktop/Peer.h"
#include "desktop/Peers.h"

namespace dravik {
namespace {

constexpr int kSteps = 1000;

class ProgressBarPeer : public PeerOf<ProgressBar, QProgressBar> {
  public:
    ProgressBarPeer(ProgressBar& model, QProgressBar& view) : PeerOf(model, view) {
        view.setRange(0, kSteps);
    }

  protected:
    void show(Change change) override {
        if (change == Change::Value)
            view_.setValue(static_cast<int>(std::lround(model_.value() * kSteps / 100)));
        else
            Peer::show(change);
    }
};

}  // namespace

QWidget* makeProgressBar(ProgressBar& model, QWidget* parent) {
    auto* view = new QProgressBar(parent);
    (new ProgressBarPeer(model, *view))->start();
    return view;
}

}  // namespace dravik
