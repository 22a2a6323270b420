#include <QRadioButton>

#include "desktop/Peer.h"
#include "desktop/Peers.h"
#include "desktop/QtConversions.h"

namespace dravik {
namespace {

class OptionButtonPeer : public PeerOf<OptionButton, QRadioButton> {
  public:
    OptionButtonPeer(OptionButton& model, QRadioButton& view) : PeerOf(model, view) {
        connect(&view, &QRadioButton::clicked, this, [this] { act([&] { model_.setChosen(true); }); });
    }

  protected:
    void show(Change change) override {
        if (change == Change::Caption) {
            view_.setText(qtText(model_.caption()));
        } else if (change == Change::Value) {
            // An exclusive group refuses to be without a choice, which the model allows.
            view_.setAutoExclusive(false);
            view_.setChecked(model_.chosen());
            view_.setAutoExclusive(true);
        } else {
            Peer::show(change);
        }
    }
};

}  // namespace

QWidget* makeOptionButton(OptionButton& model, QWidget* parent) {
    auto* view = new QRadioButton(parent);
    (new OptionButtonPeer(model, *view))->start();
    return view;
}

}  // namespace dravik
