// Draws a chart's scene in its user units, aligned to the device's pixels so that it is sharp at any size and
// scale. Left and right move a pointer from bar to bar for operators without a mouse.
#pragma once

#include <QWidget>

#include "widgets/Chart.h"

namespace dravik {

class ChartView : public QWidget {
    Q_OBJECT

  public:
    explicit ChartView(QWidget* parent);

    void setContent(const ChartScale& scale, const ChartScene& scene);
    void setBackground(Color background);

    QPointF toView(double x, double y) const;
    QPointF fromView(QPointF place) const;

    // The bars that can be seen, from 0; places are in the view's own coordinates.
    int visibleBars() const;
    const ChartBar& visibleBar(int index) const;
    QRectF visibleBarPlace(int index) const { return barPlace(visibleBar(index)); }

    QSize sizeHint() const override { return {640, 340}; }
    QSize minimumSizeHint() const override { return {320, 180}; }

  Q_SIGNALS:
    // The pointer was moved to a place by key, or the menu was asked for by key there.
    void pointed(QPointF viewPlace);
    void menuRequested(QPointF viewPlace);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    QRectF barPlace(const ChartBar& bar) const;
    QPointF pointerPlace() const;
    void movePointer(int direction);
    void paintLabel(QPainter& painter, const ChartLabel& label, double ratio) const;

    ChartScale scale_;
    ChartScene scene_;
    Color background_ = kButtonFaceColor;
    int pointedBar_ = -1;
};

}  // namespace dravik
