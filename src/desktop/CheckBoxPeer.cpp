#include <QCheckBox>

#include "desktop/Peer.h"
#include "desktop/Peers.h"
#include "desktop/QtConversions.h"

namespace dravik {
namespace {

class CheckBoxPeer : public PeerOf<CheckBox, QCheckBox> {
  public:
    CheckBoxPeer(CheckBox& model, QCheckBox& view) : PeerOf(model, view) {
        connect(&view, &QCheckBox::clicked, this,
                [this](bool checked) { act([&] { model_.setChecked(checked); }); });
    }

  protected:
    void show(Change change) override {
        if (change == Change::Caption)
            view_.setText(qtText(model_.caption()));
        else if (change == Change::Value)
            view_.setChecked(model_.checked());
        else
            Peer::show(change);
    }
};

}  // namespace

QWidget* makeCheckBox(CheckBox& model, QWidget* parent) {
    auto* view = new QCheckBox(parent);
    (new CheckBoxPeer(model, *view))->start();
    return view;
}

}  // namespace dravik
