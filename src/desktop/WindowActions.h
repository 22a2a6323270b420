// The actions of the program's window: what its menus and the part's toolbar offer, with shortcuts and
// pictures.
#pragma once

#include <QObject>
#include <vector>

#include "widgets/Button.h"
#include "widgets/Picture.h"

class QAction;
class QMenuBar;

namespace dravik {

struct Screen;

class WindowActions : public QObject {
  public:
    // The font's actions are the page's own buttons: enabled in step with them and pressing them.
    WindowActions(QObject* parent, Screen& screen);

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
    QAction* make(const char* name, const QString& text, const QString& tip, const Picture& picture = {});
    QAction* bind(const char* name, const QString& text, Button& button);

    std::vector<QAction*> fontActions_;
    std::vector<Connection> connections_;
};

}  // namespace dravik
