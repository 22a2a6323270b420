#include <QKeyEvent>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "qt/Peer.h"
#include "qt/Peers.h"

namespace dravik::qt {
namespace {

constexpr int kArrowWidth = 18;
constexpr int kArrowHeight = 13;

// A pair of arrows named "name.up" and "name.down"; arrow keys and the wheel move it too.
class UpDownPeer : public PeerOf<ui::UpDown, QWidget> {
  public:
    UpDownPeer(ui::UpDown& model, QWidget& view) : PeerOf(model, view) {
        auto* column = new QVBoxLayout(&view);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        up_ = arrow(Qt::UpArrow, ".up", +1);
        down_ = arrow(Qt::DownArrow, ".down", -1);
        column->addWidget(up_);
        column->addWidget(down_);
        view.setFocusPolicy(Qt::StrongFocus);
        view.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Value) {
            up_->setEnabled(model_.value() < model_.maximum);
            down_->setEnabled(model_.value() > model_.minimum);
        } else {
            Peer::show(change);
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const QPointer<Peer> self(this);
        if (Peer::eventFilter(watched, event) || self.isNull()) return true;
        if (watched != &view_) return false;
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<const QKeyEvent*>(event)->key();
            if (key != Qt::Key_Up && key != Qt::Key_Down) return false;
            move(key == Qt::Key_Up ? 1 : -1);
            return true;
        }
        if (event->type() == QEvent::Wheel) {
            const int delta = static_cast<const QWheelEvent*>(event)->angleDelta().y();
            if (delta != 0) move(delta > 0 ? 1 : -1);
            return true;
        }
        return false;
    }

  private:
    QToolButton* arrow(Qt::ArrowType type, const char* suffix, int direction) {
        auto* button = new QToolButton(&view_);
        button->setObjectName(view_.objectName() + QLatin1String(suffix));
        button->setArrowType(type);
        button->setAutoRepeat(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setFixedSize(kArrowWidth, kArrowHeight);
        connect(button, &QToolButton::clicked, this, [this, direction] { move(direction); });
        return button;
    }

    void move(int direction) {
        act([&] { model_.setValue(model_.value() + direction * model_.increment); });
    }

    QToolButton* up_ = nullptr;
    QToolButton* down_ = nullptr;
};

}  // namespace

QWidget* makeUpDown(ui::UpDown& model, QWidget* parent) {
    auto* view = new QWidget(parent);
    (new UpDownPeer(model, *view))->start();
    return view;
}

}  // namespace dravik::qt
