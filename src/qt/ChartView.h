// Draws a chart's scene in its user units, aligned to the device's pixels so that it is sharp at any size and
// scale. Left and right move a pointer from bar to bar for operators without a mouse.
#pragma once

#include <QWidget>

#include "ui/Chart.h"

namespace dravik::qt {

class ChartView : public QWidget {
    Q_OBJECT

  public:
    explicit ChartView(QWidget* parent);

    void setContent(const ui::ChartScale& scale, const ui::ChartScene& scene);
    void setBackground(ui::Color background);

    QPointF toView(double x, double y) const;
    QPointF fromView(QPointF place) const;

    // The bars that can be seen, from 0; places are in the view's own coordinates.
    int visibleBars() const;
    const ui::ChartBar& visibleBar(int index) const;
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
    QRectF barPlace(const ui::ChartBar& bar) const;
    QPointF pointerPlace() const;
    void movePointer(int direction);
    void paintLabel(QPainter& painter, const ui::ChartLabel& label, double ratio) const;

    ui::ChartScale scale_;
    ui::ChartScene scene_;
    ui::Color background_ = ui::kButtonFaceColor;
    int pointedBar_ = -1;
};

}  // namespace dravik::qt
