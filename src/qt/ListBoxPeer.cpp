#include <QKeyEvent>
#include <QListWidget>
#include <QSignalBlocker>

#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

class ListBoxPeer : public PeerOf<ui::ListBox, QListWidget> {
  public:
    ListBoxPeer(ui::ListBox& model, QListWidget& view) : PeerOf(model, view) {
        view.setSelectionMode(QAbstractItemView::SingleSelection);
        view.setUniformItemSizes(true);
        connect(&view, &QListWidget::itemSelectionChanged, this, [this] {
            const auto selected = view_.selectedItems();
            if (!selected.isEmpty()) act([&] { model_.setListIndex(view_.row(selected.front())); });
        });
        connect(&view, &QListWidget::itemDoubleClicked, this, [this] { act([&] { model_.doubleClick(); }); });
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Items) {
            const QSignalBlocker blocker(view_);
            QStringList items;
            for (const auto& item : model_.items()) items << qtText(item);
            view_.clear();
            view_.addItems(items);
            showSelection();
        } else if (change == ui::Change::Selection) {
            showSelection();
        } else {
            Peer::show(change);
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const QPointer<Peer> self(this);
        if (Peer::eventFilter(watched, event) || self.isNull()) return true;
        if (watched != &view_ || event->type() != QEvent::KeyPress || model_.listIndex() < 0) return false;
        const int key = static_cast<const QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
        act([&] { model_.doubleClick(); });
        return true;
    }

  private:
    void showSelection() {
        const QSignalBlocker blocker(view_);
        if (model_.listIndex() < 0)
            view_.clearSelection();
        else
            view_.setCurrentRow(model_.listIndex());
    }
};

}  // namespace

QWidget* makeListBox(ui::ListBox& model, QWidget* parent) {
    auto* view = new QListWidget(parent);
    (new ListBoxPeer(model, *view))->start();
    return view;
}

}  // namespace dravik::qt
