// A toolbar as one stop of the Tab key, in which the arrow keys, Home and End go from button to button.
#pragma once

#include <QObject>

class QToolBar;
class QWidget;

namespace dravik::qt {

class ToolbarKeys : public QObject {
  public:
    explicit ToolbarKeys(QToolBar& bar);

    // A button that was added to the bar.
    void add(QWidget& button);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void setTabStop(QWidget& button);

    QList<QWidget*> buttons_;
};

}  // namespace dravik::qt
