#include <QAction>
#include <QToolBar>
#include <vector>

#include "desktop/Peer.h"
#include "desktop/Peers.h"
#include "desktop/PictureIcon.h"
#include "desktop/QtConversions.h"

namespace dravik {
namespace {

constexpr int kIconSide = 18;

// Each button is a QAction and a QToolButton named "bar.key".
class ToolbarPeer : public PeerOf<Toolbar, QToolBar> {
  public:
    ToolbarPeer(Toolbar& model, QToolBar& view) : PeerOf(model, view) {
        view.setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        view.setIconSize(QSize(kIconSide, kIconSide));
        view.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }

  protected:
    void show(Change change) override {
        if (change == Change::Items) addButtons();
        for (std::size_t i = 0; i < actions_.size(); ++i) {
            const ToolButton& button = *model_.buttons()[i];
            actions_[i]->setEnabled(button.enabled());
            actions_[i]->setChecked(button.pressed());
            actions_[i]->setToolTip(qtText(button.toolTip().empty() ? button.caption : button.toolTip()));
        }
        Peer::show(change);
    }

  private:
    void addButtons() {
        while (actions_.size() < model_.buttons().size()) {
            ToolButton& button = *model_.buttons()[actions_.size()];
            QAction* action = view_.addAction(pictureIcon(button.picture), qtText(button.caption));
            action->setObjectName(qtText(model_.name() + "." + button.key));
            action->setCheckable(button.style == ToolButton::Style::Check);
            view_.widgetForAction(action)->setObjectName(action->objectName());
            connect(action, &QAction::triggered, this, [this, &button] {
                const QPointer<Peer> self(this);
                act([&] { button.press(); });
                if (self) show(Change::Value);  // Qt has flipped a check button by itself
            });
            actions_.push_back(action);
        }
    }

    std::vector<QAction*> actions_;
};

}  // namespace

QWidget* makeToolbar(Toolbar& model, QWidget* parent) {
    auto* view = new QToolBar(parent);
    (new ToolbarPeer(model, *view))->start();
    return view;
}

}  // namespace dravik
