#include "qt/ElidedLabel.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace dravik::qt {

constexpr int kLeastCharacters = 6;

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setOwnToolTip(const QString& toolTip) {
    ownToolTip_ = toolTip;
    setToolTip(toolTip);
}

QSize ElidedLabel::minimumSizeHint() const {
    const QSize full = QLabel::minimumSizeHint();
    return {std::min(full.width(), fontMetrics().averageCharWidth() * kLeastCharacters + 2 * margin()),
            full.height()};
}

bool ElidedLabel::isCut() const {
    return fontMetrics().horizontalAdvance(text()) > contentsRect().width();
}

void ElidedLabel::paintEvent(QPaintEvent* event) {
    if (buddy() || !isCut()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    const QRect place = contentsRect().adjusted(margin(), 0, -margin(), 0);
    style()->drawItemText(&painter, place, static_cast<int>(alignment()), palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, place.width()), foregroundRole());
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) setToolTip(isCut() ? text() : ownToolTip_);
    return QLabel::event(event);
}

}  // namespace dravik::qt
