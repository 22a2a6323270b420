// The actions of the program's window: what its menus and the part's toolbar offer, with shortcuts and
// pictures.
#pragma once

#include <QObject>
#include <vector>

#include "ui/Button.h"
#include "ui/Picture.h"

class QAction;
class QMenuBar;

namespace dravik::screen {
struct Screen;
}

namespace dravik::qt {

class WindowActions : public QObject {
  public:
    // The font's actions are the page's own buttons: enabled in step with them and pressing them.
    WindowActions(QObject* parent, screen::Screen& screen);

    void fillMenus(QMenuBar& menuBar) const;

    QAction* openImages;
    QAction* openFolder;
    QAction* closeImage;
    QAction* closeAll;
    QAction* quit;
    QAction* previous;
    QAction* next;
    QAction* zoomIn;
    QAction* zoomOut;
    QAction* fit;
    QAction* actualSize;
    QAction* keys;
    QAction* about;

  private:
    QAction* make(const char* name, const QString& text, const QString& tip, const ui::Picture& picture = {});
    QAction* bind(const char* name, const QString& text, ui::Button& button);

    std::vector<QAction*> fontActions_;
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::qt
