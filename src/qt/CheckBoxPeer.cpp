#include <QCheckBox>

#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

class CheckBoxPeer : public PeerOf<ui::CheckBox, QCheckBox> {
  public:
    CheckBoxPeer(ui::CheckBox& model, QCheckBox& view) : PeerOf(model, view) {
        connect(&view, &QCheckBox::clicked, this,
                [this](bool checked) { act([&] { model_.setChecked(checked); }); });
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Caption)
            view_.setText(qtText(model_.caption()));
        else if (change == ui::Change::Value)
            view_.setChecked(model_.checked());
        else
            Peer::show(change);
    }
};

}  // namespace

QWidget* makeCheckBox(ui::CheckBox& model, QWidget* parent) {
    auto* view = new QCheckBox(parent);
    (new CheckBoxPeer(model, *view))->start();
    return view;
}

}  // namespace dravik::qt
