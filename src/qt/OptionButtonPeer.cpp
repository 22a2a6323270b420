#include <QRadioButton>

#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

class OptionButtonPeer : public PeerOf<ui::OptionButton, QRadioButton> {
  public:
    OptionButtonPeer(ui::OptionButton& model, QRadioButton& view) : PeerOf(model, view) {
        connect(&view, &QRadioButton::clicked, this, [this] { act([&] { model_.setChosen(true); }); });
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Caption) {
            view_.setText(qtText(model_.caption()));
        } else if (change == ui::Change::Value) {
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

QWidget* makeOptionButton(ui::OptionButton& model, QWidget* parent) {
    auto* view = new QRadioButton(parent);
    (new OptionButtonPeer(model, *view))->start();
    return view;
}

}  // namespace dravik::qt
