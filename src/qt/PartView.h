// The current part image with a box around every found character and the label of each below it. Zooms with
// Ctrl and the wheel, pans by dragging and with the scroll bars.
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

  private:
    void showImage();
    void showState();
    void paintImage(QPainter& painter);
    void paintCharacters(QPainter& painter);
    void paintTag(QPainter& painter, const trainer::CharacterMark& mark);

    trainer::PartViewModel& model_;
    QImage image_;
    QPixmap shrunk_;  // the whole image at the current scale, kept while that is small
    double shrunkScale_ = 0;
    bool showing_ = false;  // the scroll bars move by the model
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::qt
