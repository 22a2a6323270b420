#include <QComboBox>
#include <QSignalBlocker>

#include "desktop/Peer.h"
#include "desktop/Peers.h"
#include "desktop/QtConversions.h"

namespace dravik {
namespace {

class ComboBoxPeer : public PeerOf<ComboBox, QComboBox> {
  public:
    ComboBoxPeer(ComboBox& model, QComboBox& view) : PeerOf(model, view) {
        view.setSizeAdjustPolicy(QComboBox::AdjustToContents);
        connect(&view, &QComboBox::activated, this,
                [this](int index) { act([&] { model_.setListIndex(index); }); });
    }

  protected:
    void show(Change change) override {
        if (change == Change::Items) {
            const QSignalBlocker blocker(view_);
            QStringList items;
            for (const auto& item : model_.items()) items << qtText(item);
            view_.clear();
            view_.addItems(items);
            view_.setCurrentIndex(model_.listIndex());
        } else if (change == Change::Selection) {
            view_.setCurrentIndex(model_.listIndex());
        } else {
            Peer::show(change);
        }
    }
};

}  // namespace

QWidget* makeComboBox(ComboBox& model, QWidget* parent) {
    auto* view = new QComboBox(parent);
    (new ComboBoxPeer(model, *view))->start();
    return view;
}

}  // namespace dravik
