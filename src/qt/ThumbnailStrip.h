// The opened parts as a strip of small pictures. A picture is decoded only when it comes into view, one at a
// time, so that thousands of parts open at once.
#pragma once

#include <QListView>

#include "trainer/OpenedParts.h"

namespace dravik::qt {

class ThumbnailModel;

class ThumbnailStrip : public QListView {
  public:
    ThumbnailStrip(trainer::OpenedParts& parts, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {120, sizeHint().height()}; }

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void showCurrent();

    trainer::OpenedParts& parts_;
    ThumbnailModel* model_;
    bool showing_ = false;
    ui::Connection listChanged_;
    ui::Connection currentChanged_;
};

}  // namespace dravik::qt
