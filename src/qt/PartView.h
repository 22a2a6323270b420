// The current part image with a box around every found character and below it the label that the typed text
// gives it. Zooms with Ctrl and the wheel or the zoom keys, pans by dragging and with the scroll bars.
#pragma once

#include <QAbstractScrollArea>
#include <QImage>
#include <QPixmap>
#include <vector>

#include "trainer/Trainer.h"

namespace dravik::qt {

class PartView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    explicit PartView(QWidget* parent);

    // A null image shows the message instead. A new image is fitted unless the operator has chosen a scale.
    void setImage(const QImage& image, const QString& message);
    // `mismatch` as Trainer::mismatch(): characters that lack a label are then marked as a warning.
    void setCharacters(std::vector<trainer::LabelledCharacter> characters, int mismatch);

    // Device independent pixels per image pixel.
    double scale() const noexcept { return scale_; }
    bool fits() const noexcept { return fits_; }
    void fit();
    void setScale(double scale);
    void zoomIn();
    void zoomOut();

    QSize sizeHint() const override { return {520, 320}; }
    QSize minimumSizeHint() const override { return {200, 120}; }

  Q_SIGNALS:
    void scaleChanged();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void zoomAround(double scale, QPointF place);
    void updateScrollBars();
    void stopFitting();
    double fittingScale() const;
    QPointF origin() const;
    QRectF onScreen(const engine::FoundCharacter& place) const;
    void paintImage(QPainter& painter);
    void paintCharacters(QPainter& painter);
    void paintTag(QPainter& painter, QRectF box, const QString& text, bool warning);

    QImage image_;
    QPixmap shrunk_;  // the whole image at the current scale, kept while that is small
    QString message_;
    std::vector<trainer::LabelledCharacter> characters_;
    int mismatch_ = 0;
    double scale_ = 1;
    bool fits_ = true;
    QPoint dragFrom_;
    bool dragging_ = false;
};

}  // namespace dravik::qt
