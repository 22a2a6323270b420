#include <QPushButton>

#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

class ButtonPeer : public PeerOf<ui::Button, QPushButton> {
  public:
    ButtonPeer(ui::Button& model, QPushButton& view) : PeerOf(model, view) {
        // Enter is the form's business: it knows the default button.
        view.setAutoDefault(false);
        connect(&view, &QPushButton::clicked, this, [this] { act([&] { model_.press(); }); });
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Caption)
            view_.setText(qtText(model_.caption()));
        else
            Peer::show(change);
    }
};

}  // namespace

QWidget* makeButton(ui::Button& model, QWidget* parent) {
    auto* view = new QPushButton(parent);
    (new ButtonPeer(model, *view))->start();
    return view;
}

}  // namespace dravik::qt
