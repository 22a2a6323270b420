#include <QComboBox>
#include <QSignalBlocker>

#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

class ComboBoxPeer : public PeerOf<ui::ComboBox, QComboBox> {
  public:
    ComboBoxPeer(ui::ComboBox& model, QComboBox& view) : PeerOf(model, view) {
        view.setSizeAdjustPolicy(QComboBox::AdjustToContents);
        connect(&view, &QComboBox::activated, this,
                [this](int index) { act([&] { model_.setListIndex(index); }); });
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Items) {
            const QSignalBlocker blocker(view_);
            QStringList items;
            for (const auto& item : model_.items()) items << qtText(item);
            view_.clear();
            view_.addItems(items);
            view_.setCurrentIndex(model_.listIndex());
        } else if (change == ui::Change::Selection) {
            view_.setCurrentIndex(model_.listIndex());
        } else {
            Peer::show(change);
        }
    }
};

}  // namespace

QWidget* makeComboBox(ui::ComboBox& model, QWidget* parent) {
    auto* view = new QComboBox(parent);
    (new ComboBoxPeer(model, *view))->start();
    return view;
}

}  // namespace dravik::qt
