// A grid of small grey pictures, of which only those in view are asked for and drawn.
#pragma once

#include <QAbstractScrollArea>

#include "ui/PictureGrid.h"

namespace dravik::qt {

class PictureGridView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    explicit PictureGridView(QWidget* parent);

    // Null once the model is going away.
    void setModel(ui::PictureGrid* model);
    void showState();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    void paintItem(QPainter& painter, int index);

    ui::PictureGrid* model_ = nullptr;
    bool showing_ = false;  // the scroll bar moves by the model
};

}  // namespace dravik::qt
