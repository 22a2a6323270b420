// Progress bar, status bar and up-down control.
#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QProgressBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <cmath>
#include <vector>

#include "qt/ElidedLabel.h"
#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"
#include "ui/Lengths.h"

namespace dravik::qt {
namespace {

constexpr int kSteps = 1000;

class ProgressBarPeer : public PeerOf<ui::ProgressBar, QProgressBar> {
  public:
    ProgressBarPeer(ui::ProgressBar& model, QProgressBar& view) : PeerOf(model, view) {
        view.setRange(0, kSteps);
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Value)
            view_.setValue(static_cast<int>(std::lround(model_.value() * kSteps / 100)));
        else
            Peer::show(change);
    }
};

// Each panel is a label named "bar.key".
class StatusBarPeer : public PeerOf<ui::StatusBar, QWidget> {
  public:
    StatusBarPeer(ui::StatusBar& model, QWidget& view) : PeerOf(model, view), row_(new QHBoxLayout(&view)) {
        row_->setContentsMargins(0, 0, 0, 0);
        row_->setSpacing(3);
        view.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }

  protected:
    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Items:
                addPanels();
                [[fallthrough]];
            case ui::Change::Caption:
                for (std::size_t i = 0; i < labels_.size(); ++i) showText(*labels_[i], *model_.panels()[i]);
                break;
            case ui::Change::ToolTip:
                Peer::show(change);
                for (std::size_t i = 0; i < labels_.size(); ++i)
                    labels_[i]->setOwnToolTip(qtText(model_.panels()[i]->toolTip()));
                break;
            default:
                Peer::show(change);
        }
    }

  private:
    void addPanels() {
        while (labels_.size() < model_.panels().size()) {
            const ui::StatusPanel& panel = *model_.panels()[labels_.size()];
            auto* label = new ElidedLabel(&view_);
            label->setObjectName(qtText(model_.name() + "." + panel.key));
            label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
            label->setMargin(2);
            label->setMinimumWidth(ui::pixels(panel.width));
            // A long text must not take the room of the panel that stretches.
            if (!panel.stretches) label->setMaximumWidth(ui::pixels(panel.width) * 3 / 2);
            label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
            row_->addWidget(label, panel.stretches ? 1 : 0);
            labels_.push_back(label);
        }
    }

    static void showText(ElidedLabel& label, const ui::StatusPanel& panel) {
        const QString text = qtText(panel.text()).replace(QLatin1Char('\r'), QLatin1Char(' '));
        if (label.text() == text) return;
        label.setText(text);
        QAccessibleEvent changed(&label, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&changed);
    }

    QHBoxLayout* row_;
    std::vector<ElidedLabel*> labels_;
};

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

QWidget* make(ui::ProgressBar& model, QWidget* parent) {
    return viewWith<ProgressBarPeer>(model, parent);
}

QWidget* make(ui::StatusBar& model, QWidget* parent) {
    return viewWith<StatusBarPeer>(model, parent);
}

QWidget* make(ui::UpDown& model, QWidget* parent) {
    return viewWith<UpDownPeer>(model, parent);
}

}  // namespace dravik::qt
