// The three kinds of buttons.
#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>

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
            view_.setText(qtText(model_.shownCaption()));
        else
            Peer::show(change);
    }
};

class CheckBoxPeer : public PeerOf<ui::CheckBox, QCheckBox> {
  public:
    CheckBoxPeer(ui::CheckBox& model, QCheckBox& view) : PeerOf(model, view) {
        connect(&view, &QCheckBox::clicked, this,
                [this](bool checked) { act([&] { model_.setChecked(checked); }); });
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Caption)
            view_.setText(qtText(model_.shownCaption()));
        else if (change == ui::Change::Value)
            view_.setChecked(model_.checked());
        else
            Peer::show(change);
    }
};

// The arrow keys choose, also where nothing is chosen yet; Qt moves the focus alone then.
class RadioButton : public QRadioButton {
  public:
    using QRadioButton::QRadioButton;

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        QRadioButton::keyPressEvent(event);
        const int key = event->key();
        if (key != Qt::Key_Left && key != Qt::Key_Right && key != Qt::Key_Up && key != Qt::Key_Down) return;
        auto* reached = qobject_cast<QRadioButton*>(QApplication::focusWidget());
        if (reached && reached != this && reached->parent() == parent() && !reached->isChecked())
            reached->click();
    }
};

class OptionButtonPeer : public PeerOf<ui::OptionButton, RadioButton> {
  public:
    OptionButtonPeer(ui::OptionButton& model, RadioButton& view) : PeerOf(model, view) {
        connect(&view, &QRadioButton::clicked, this, [this] { act([&] { model_.setChosen(true); }); });
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Caption) {
            view_.setText(qtText(model_.shownCaption()));
        } else if (change == ui::Change::Value) {
            // An exclusive group refuses to be without a choice, which the model allows.
            view_.setAutoExclusive(false);
            view_.setChecked(model_.chosen());
            view_.setAutoExclusive(true);
        } else {
            Peer::show(change);
        }
    }
};

}  // namespace

QWidget* make(ui::Button& model, QWidget* parent) {
    return viewWith<ButtonPeer>(model, parent);
}

QWidget* make(ui::CheckBox& model, QWidget* parent) {
    return viewWith<CheckBoxPeer>(model, parent);
}

QWidget* make(ui::OptionButton& model, QWidget* parent) {
    return viewWith<OptionButtonPeer>(model, parent);
}

}  // namespace dravik::qt
