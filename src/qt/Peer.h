// What every peer does: it shows a widget model in a QWidget, watches the model for changes and turns the
// operator's actions into the model's events. A peer is a child object of its view and lives as long as that.
#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QWidget>

#include "qt/Guard.h"
#include "ui/TypedAhead.h"
#include "ui/Widget.h"

class QMouseEvent;

namespace dravik::qt {

class Peer : public QObject {
  public:
    Peer(ui::Widget& model, QWidget& view);
    ~Peer() override;

    // The peer that shows the model now, nothing when none does.
    static Peer* of(const ui::Widget& model);

    QWidget& view() const noexcept { return view_; }

    // Shows the whole state and starts to watch it. Called once, when the peer is complete.
    void start();
    // The model is going away: from now on the peer touches it no more.
    void detach() noexcept;

    // Shows the model's colours in what is the palette now.
    void showColors() {
        guarded([this] { show(ui::Change::Appearance); });
    }

    // A place as the model's mouse events give it, in the view's pixels, and back.
    virtual QPointF toView(double x, double y) const;
    virtual QPointF fromView(QPointF place) const;

    void fireMouseDown(int button, Qt::KeyboardModifiers modifiers, QPointF viewPlace);
    void fireMouseMove(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers, QPointF viewPlace);

  protected:
    // Shows one kind of change; every override passes on what it does not handle.
    virtual void show(ui::Change change);
    // The model is going away: forget what else refers to it.
    virtual void letGo() {}

    // Runs what fires events of the model.
    template <class Body>
    void act(Body&& body) {
        if (attached_) guarded(std::forward<Body>(body));
    }
    bool attached() const noexcept { return attached_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void giveFocus();
    bool isTypedAhead(const QKeyEvent& key);

    ui::Widget& model_;
    QWidget& view_;
    ui::Connection changed_;
    ui::TypedAhead typedAhead_;
    bool attached_ = true;
};

// A mouse button of the models; 0 for one that they do not know.
int buttonCode(Qt::MouseButton button);
// The code that the widgets' events carry for a key of Qt; 0 for keys that have none.
int virtualKey(int key);
// The shift state of the models: kShiftMask, kCtrlMask, kAltMask.
int shiftState(Qt::KeyboardModifiers modifiers);

template <class Model, class View>
class PeerOf : public Peer {
  public:
    using ViewType = View;

    PeerOf(Model& model, View& view) : Peer(model, view), model_(model), view_(view) {}

  protected:
    Model& model_;
    View& view_;
};

// A view with its peer, which shows the model from now on.
template <class PeerType, class Model>
QWidget* viewWith(Model& model, QWidget* parent) {
    auto* view = new typename PeerType::ViewType(parent);
    (new PeerType(model, *view))->start();
    return view;
}

}  // namespace dravik::qt
