// Draws a chart's scene in its user units, aligned to the device's pixels so that it is sharp at any size and
// scale. The bar that is pointed at is marked while the view has the focus, and told to screen readers.
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
    // One of the scene's bars; -1 for none.
    void setPointed(int bar);

    QPointF toView(double x, double y) const;
    QPointF fromView(QPointF place) const;

    // The bars that can be seen, from 0; places are in the view's own coordinates.
    int visibleBars() const;
    const ui::ChartBar& visibleBar(int index) const;
    QRectF visibleBarPlace(int index) const { return barPlace(visibleBar(index)); }

    QSize sizeHint() const override { return {640, 340}; }
    QSize minimumSizeHint() const override { return {320, 180}; }

  Q_SIGNALS:
    void menuKeyPressed();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    QRectF barPlace(const ui::ChartBar& bar) const;
    void paintLabel(QPainter& painter, const ui::ChartLabel& label, double ratio) const;

    ui::ChartScale scale_;
    ui::ChartScene scene_;
    ui::Color background_ = ui::kButtonFaceColor;
    int pointedBar_ = -1;
};

}  // namespace dravik::qt
