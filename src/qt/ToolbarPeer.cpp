#include <QAction>
#include <QToolBar>
#include <vector>

#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/PictureIcon.h"
#include "qt/QtConversions.h"
#include "qt/ToolbarKeys.h"

namespace dravik::qt {
namespace {

constexpr int kIconSide = 18;

// Each button is a QAction and a QToolButton named "bar.key".
class ToolbarPeer : public PeerOf<ui::Toolbar, QToolBar> {
  public:
    ToolbarPeer(ui::Toolbar& model, QToolBar& view) : PeerOf(model, view), keys_(new ToolbarKeys(view)) {
        view.setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        view.setIconSize(QSize(kIconSide, kIconSide));
        view.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }

  protected:
    void show(ui::Change change) override {
        if (change == ui::Change::Items) addButtons();
        for (std::size_t i = 0; i < actions_.size(); ++i) {
            const ui::ToolButton& button = *model_.buttons()[i];
            actions_[i]->setEnabled(button.enabled());
            actions_[i]->setChecked(button.pressed());
            actions_[i]->setToolTip(qtText(button.toolTip().empty() ? button.caption : button.toolTip()));
        }
        Peer::show(change);
    }

  private:
    void addButtons() {
        while (actions_.size() < model_.buttons().size()) {
            ui::ToolButton& button = *model_.buttons()[actions_.size()];
            QAction* action = view_.addAction(pictureIcon(button.picture), qtText(button.caption));
            action->setObjectName(qtText(model_.name() + "." + button.key));
            action->setCheckable(button.style == ui::ToolButton::Style::Check);
            view_.widgetForAction(action)->setObjectName(action->objectName());
            keys_->add(*view_.widgetForAction(action));
            connect(action, &QAction::triggered, this, [this, &button] {
                const QPointer<Peer> self(this);
                act([&] { button.press(); });
                if (self) show(ui::Change::Value);  // Qt has flipped a check button by itself
            });
            actions_.push_back(action);
        }
    }

    ToolbarKeys* keys_;
    std::vector<QAction*> actions_;
};

}  // namespace

QWidget* make(ui::Toolbar& model, QWidget* parent) {
    return viewWith<ToolbarPeer>(model, parent);
}

}  // namespace dravik::qt
