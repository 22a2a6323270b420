// The actions of the program's window as Qt's: in the menu bar, on the part's toolbar and by their keys.
#pragma once

#include <QObject>
#include <map>
#include <vector>

#include "trainer/window/WindowActions.h"

class QAction;
class QMenu;
class QMenuBar;
class QToolBar;

namespace dravik::qt {

class WindowMenus : public QObject {
  public:
    // The actions outlive the window.
    WindowMenus(trainer::WindowActions& actions, QMenuBar& menuBar, QObject* parent);

    void fill(QToolBar& bar) const;

  private:
    void fill(QMenu& menu, const trainer::ActionList& entries);
    QAction* make(trainer::Action& action);

    trainer::WindowActions& actions_;
    std::map<const trainer::Action*, QAction*> shown_;
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::qt
