// The current part image with a box around every found character, the label of each below it and what the
// font reads above it. Zooms with Ctrl and the wheel, pans by dragging and with the scroll bars; in the modes
// of its model the region is drawn and boxes are corrected.
#pragma once

#include <QAbstractScrollArea>
#include <QImage>
#include <QPixmap>
#include <vector>

#include "trainer/window/PartViewModel.h"

namespace dravik::qt {

class PartView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    // The model outlives the view.
    PartView(trainer::PartViewModel& model, QWidget* parent);

    QSize sizeHint() const override { return {520, 320}; }
    QSize minimumSizeHint() const override { return {200, 120}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    void showImage();
    void showState();
    void paintImage(QPainter& painter);
    void paintCharacters(QPainter& painter);
    void paintFrame(QPainter& painter, const trainer::ViewFrame& frame);
    void paintTag(QPainter& painter, const trainer::ViewTag& tag);
    bool takesKey(const QKeyEvent& event);
    void showCursor(QPointF place);

    trainer::PartViewModel& model_;
    QImage image_;
    QPixmap shrunk_;  // the whole image at the current scale, kept while that is small
    double shrunkScale_ = 0;
    bool showing_ = false;  // the scroll bars move by the model
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::qt
