#include <QAccessible>
#include <QToolTip>

#include "qt/CellView.h"
#include "qt/ElidedLabel.h"
#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"
#include "qt/Theme.h"

namespace dravik::qt {
namespace {

Qt::Alignment qtAlignment(ui::Label::Alignment alignment) {
    switch (alignment) {
        case ui::Label::Alignment::Center:
            return Qt::AlignCenter;
        case ui::Label::Alignment::End:
            return Qt::AlignRight | Qt::AlignVCenter;
        default:
            return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

QFont labelFont(const ui::Label& model, QFont font) {
    font.setBold(model.bold());
    if (model.fontSize() > 0) font.setPointSize(model.fontSize());
    return font;
}

class LabelPeer : public PeerOf<ui::Label, ElidedLabel> {
  public:
    LabelPeer(ui::Label& model, ElidedLabel& view) : PeerOf(model, view) {
        // The whole text, but where the arrangement gives it a share of the width.
        view.setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);
    }

  protected:
    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Caption:
                view_.setText(qtText(model_.caption()));
                break;
            case ui::Change::ToolTip:
                Peer::show(change);
                view_.setOwnToolTip(qtText(model_.toolTip()));
                break;
            case ui::Change::Appearance: {
                view_.setAlignment(qtAlignment(model_.alignment()));
                view_.setFont(labelFont(model_, view_.font()));
                const bool own = !ui::isSystemColor(model_.backColor());
                view_.setAutoFillBackground(own);
                QPalette palette;
                if (own) palette.setColor(QPalette::Window, qtColor(model_.backColor(), palette));
                if (own || !ui::isSystemColor(model_.foreColor()))
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

class CellPeer : public PeerOf<ui::Label, CellView> {
  public:
    CellPeer(ui::Label& model, CellView& view) : PeerOf(model, view) {
        if (!model.takesFocus()) view.setFocusPolicy(Qt::NoFocus);
        connect(&view, &CellView::focused, this, [this] {
            fireMouseMove(Qt::NoButton, Qt::NoModifier, centre());
            if (!view_.toolTip().isEmpty())
                QToolTip::showText(view_.mapToGlobal(QPoint(0, view_.height())), view_.toolTip(), &view_);
        });
        connect(&view, &CellView::menuRequested, this,
                [this] { fireMouseDown(ui::kRightButton, Qt::NoModifier, centre()); });
    }

  protected:
    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Caption:
                view_.setCaption(qtText(model_.caption()), qtText(model_.figure()));
                showName();
                break;
            case ui::Change::Appearance:
                view_.setFont(labelFont(model_, view_.font()));
                view_.setColors(model_.backColor(), model_.foreColor());
                break;
            case ui::Change::ToolTip:
                Peer::show(change);
                showName();
                break;
            case ui::Change::Name:
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

QWidget* make(ui::Label& model, QWidget* parent) {
    return model.isCell() ? viewWith<CellPeer>(model, parent) : viewWith<LabelPeer>(model, parent);
}

}  // namespace dravik::qt
