// The list that drops down and the one that stands open.
#include <QComboBox>
#include <QKeyEvent>
#include <QListWidget>
#include <QSignalBlocker>

#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

template <class View>
void fill(View& view, const std::vector<std::string>& items) {
    QStringList texts;
    for (const auto& item : items) texts << qtText(item);
    view.clear();
    view.addItems(texts);
}

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
            fill(view_, model_.items());
            view_.setCurrentIndex(model_.listIndex());
        } else if (change == ui::Change::Selection) {
            view_.setCurrentIndex(model_.listIndex());
        } else {
            Peer::show(change);
        }
    }
};

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
            fill(view_, model_.items());
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
        if (watched != &view_ || event->type() != QEvent::KeyPress) return false;
        const int key = static_cast<const QKeyEvent*>(event)->key();
        if (model_.listIndex() < 0) {
            // Qt takes the first entry for the current one, so that no key would choose it.
            if ((key != Qt::Key_Down && key != Qt::Key_Up && key != Qt::Key_Space) || view_.count() == 0)
                return false;
            act([&] { model_.setListIndex(0); });
            return true;
        }
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

QWidget* make(ui::ComboBox& model, QWidget* parent) {
    return viewWith<ComboBoxPeer>(model, parent);
}

QWidget* make(ui::ListBox& model, QWidget* parent) {
    return viewWith<ListBoxPeer>(model, parent);
}

}  // namespace dravik::qt
