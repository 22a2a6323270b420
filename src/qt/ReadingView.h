// What the current font reads in the current image. Weak characters are underlined with a wave, and the tool
// tip of every character says how sure the font is.
#pragma once

#include <QTextEdit>

#include "trainer/window/ReadingModel.h"

namespace dravik::qt {

class ReadingView : public QTextEdit {
  public:
    // The model outlives the view.
    ReadingView(trainer::ReadingModel& model, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void showReading();
    QFont textFont() const;
    int heightOf(int lines) const;

    trainer::ReadingModel& model_;
    ui::Connection changed_;
};

}  // namespace dravik::qt
