// The opened parts as a list of small pictures with their names.
#pragma once

#include <QListView>

#include "trainer/window/PartStrip.h"

namespace dravik::qt {

class ThumbnailStrip : public QListView {
  public:
    // The model outlives the view.
    ThumbnailStrip(trainer::PartStrip& strip, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void showCurrent();

    trainer::PartStrip& strip_;
    bool showing_ = false;
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::qt
