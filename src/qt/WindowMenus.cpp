#include "qt/WindowMenus.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "qt/Guard.h"
#include "qt/PictureIcon.h"
#include "qt/QtConversions.h"
#include "qt/ToolbarKeys.h"

namespace dravik::qt {

WindowMenus::WindowMenus(trainer::WindowActions& actions, QMenuBar& menuBar, QObject* parent)
    : QObject(parent), actions_(actions) {
    for (const trainer::ActionMenu& menu : actions.menus())
        fill(*menuBar.addMenu(qtText(menu.caption)), menu.entries);
    shown_.at(&actions.quit)->setMenuRole(QAction::QuitRole);
    shown_.at(&actions.about)->setMenuRole(QAction::AboutRole);
}

void WindowMenus::fill(QMenu& menu, const trainer::ActionList& entries) {
    for (trainer::Action* action : entries) {
        if (!action) {
            menu.addSeparator();
            continue;
        }
        QAction* shown = make(*action);
        menu.addAction(shown);
        if (action->entries().empty()) continue;
        auto* inside = new QMenu(&menu);
        fill(*inside, action->entries());
        shown->setMenu(inside);
    }
}

QAction* WindowMenus::make(trainer::Action& action) {
    const trainer::ActionFace& face = action.face();
    auto* shown = new QAction(qtText(face.text), this);
    shown_[&action] = shown;
    shown->setObjectName(qtText(face.name));
    shown->setToolTip(qtText(face.tip));
    QList<QKeySequence> keys;
    for (const std::string& key : face.keys) keys << QKeySequence(qtText(key), QKeySequence::PortableText);
    shown->setShortcuts(keys);
    if (!face.picture.empty()) shown->setIcon(pictureIcon(face.picture));
    shown->setCheckable(face.checkable);
    const auto showState = [&action, shown] {
        shown->setText(qtText(action.text()));
        shown->setEnabled(action.enabled());
        shown->setChecked(action.checked());
        shown->setVisible(action.visible());
    };
    connections_.push_back(action.changed.connect(showState));
    connect(shown, &QAction::triggered, this, [&action, showState] {
        guarded([&] { action.trigger(); });
        showState();  // Qt has checked it by itself
    });
    showState();
    return shown;
}

void WindowMenus::fill(QToolBar& bar) const {
    auto* keys = new ToolbarKeys(bar);
    for (const trainer::Action* action : actions_.toolbar()) {
        if (!action) {
            bar.addSeparator();
            continue;
        }
        QAction* shown = shown_.at(action);
        bar.addAction(shown);
        keys->add(*bar.widgetForAction(shown));
    }
}

}  // namespace dravik::qt
