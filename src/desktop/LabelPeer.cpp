#include <QAccessible>
#include <QToolTip>

#include "desktop/CellView.h"
#include "desktop/ElidedLabel.h"
#include "desktop/Peer.h"
#include "desktop/Peers.h"
#include "desktop/QtConversions.h"
#include "desktop/Theme.h"

namespace dravik {
namespace {

Qt::Alignment qtAlignment(Label::Alignment alignment) {
    switch (alignment) {
        case Label::Alignment::Center:
            return Qt::AlignCenter;
        case Label::Alignment::End:
            return Qt::AlignRight | Qt::AlignVCenter;
        default:
            return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

QFont labelFont(const Label& model, QFont font) {
    font.setBold(model.bold());
    if (model.fontSize() > 0) font.setPointSize(model.fontSize());
    return font;
}

class LabelPeer : public PeerOf<Label, ElidedLabel> {
  public:
    using PeerOf::PeerOf;

  protected:
    void show(Change change) override {
        switch (change) {
            case Change::Caption:
                view_.setText(qtText(model_.caption()));
                break;
            case Change::ToolTip:
                Peer::show(change);
                view_.setOwnToolTip(qtText(model_.toolTip()));
                break;
            case Change::Appearance: {
                view_.setAlignment(qtAlignment(model_.alignment()));
                view_.setFont(labelFont(model_, view_.font()));
                const bool own = !isSystemColor(model_.backColor());
                view_.setAutoFillBackground(own);
                QPalette palette;
                if (own) palette.setColor(QPalette::Window, qtColor(model_.backColor(), palette));
                if (own || !isSystemColor(model_.foreColor()))
                    palette.setColor(QPalette::WindowText,
                                     textColorOn(model_.backColor(), model_.foreColor(), palette));
                view_.setPalette(palette);
                break;
            }
            default:
                Peer::show(change);
        }
    }
};

class CellPeer : public PeerOf<Label, CellView> {
  public:
    CellPeer(Label& model, CellView& view) : PeerOf(model, view) {
        if (model.caption().empty()) view.setFocusPolicy(Qt::NoFocus);
        connect(&view, &CellView::focused, this, [this] {
            fireMouseMove(Qt::NoButton, Qt::NoModifier, centre());
            if (!view_.toolTip().isEmpty())
                QToolTip::showText(view_.mapToGlobal(QPoint(0, view_.height())), view_.toolTip(), &view_);
        });
        connect(&view, &CellView::menuRequested, this,
                [this] { fireMouseDown(kRightButton, Qt::NoModifier, centre()); });
    }

  protected:
    void show(Change change) override {
        switch (change) {
            case Change::Caption:
                view_.setCaption(qtText(model_.caption()));
                showName();
                break;
            case Change::Appearance:
                view_.setFont(labelFont(model_, view_.font()));
                view_.setColors(model_.backColor(), model_.foreColor());
                break;
            case Change::ToolTip:
                Peer::show(change);
                showName();
                break;
            case Change::Name:
                showName();
                break;
            default:
                Peer::show(change);
        }
    }

  private:
    QPointF centre() const { return QRectF(view_.rect()).center(); }

    void showName() {
        const std::string& name = !model_.accessibleName().empty() ? model_.accessibleName()
                                  : !model_.toolTip().empty()      ? model_.toolTip()
                                                                   : model_.caption();
        view_.setAccessibleName(qtText(name));
        QAccessibleEvent changed(&view_, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&changed);
    }
};

}  // namespace

QWidget* makeLabel(Label& model, QWidget* parent) {
    if (model.isCell()) {
        auto* view = new CellView(parent);
        (new CellPeer(model, *view))->start();
        return view;
    }
    auto* view = new ElidedLabel(parent);
    (new LabelPeer(model, *view))->start();
    return view;
}

}  // namespace dravik
