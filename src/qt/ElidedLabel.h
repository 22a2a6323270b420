// A line of plain text that is cut with an ellipsis when there is too little room, and then says all of it in
// its tool tip. "&" marks an access key only when the label has a buddy.
#pragma once

#include <QLabel>

namespace dravik::qt {

class ElidedLabel : public QLabel {
  public:
    explicit ElidedLabel(QWidget* parent);

    // The tool tip that is shown while the whole text is.
    void setOwnToolTip(const QString& toolTip);

    // A few characters.
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    bool isCut() const;

    QString ownToolTip_;
};

}  // namespace dravik::qt
