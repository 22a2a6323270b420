#include <QPushButton>

#include "desktop/Peer.h"
#include "desktop/Peers.h"
#include "desktop/QtConversions.h"

namespace dravik {
namespace {

class ButtonPeer : public PeerOf<Button, QPushButton> {
  public:
    ButtonPeer(Button& model, QPushButton& view) : PeerOf(model, view) {
        // Enter is the form's business: it knows the default button.
        view.setAutoDefault(false);
        connect(&view, &QPushButton::clicked, this, [this] { act([&] { model_.press(); }); });
    }

  protected:
    void show(Change change) override {
        if (change == Change::Caption)
            view_.setText(qtText(model_.caption()));
        else
            Peer::show(change);
    }
};

}  // namespace

QWidget* makeButton(Button& model, QWidget* parent) {
    auto* view = new QPushButton(parent);
    (new ButtonPeer(model, *view))->start();
    return view;
}

}  // namespace dravik
