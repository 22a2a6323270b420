// What the current font reads in the current image, line by line. Weak characters are underlined with a wave,
// those that are hardly more than a guess shown as "?", and the tool tip of every character says how sure the
// font is.
#pragma once

#include <QTextEdit>

#include "trainer/Trainer.h"

namespace dravik::qt {

class ReadingView : public QTextEdit {
  public:
    explicit ReadingView(QWidget* parent);

    void setReading(const trainer::Reading& reading);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void showReading();
    int heightOf(int lines) const;

    trainer::Reading reading_;
};

}  // namespace dravik::qt
