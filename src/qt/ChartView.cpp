#include "qt/ChartView.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "base/Failure.h"
#include "qt/QtConversions.h"
#include "qt/Theme.h"

namespace dravik::qt {

constexpr int kOutlineAlpha = 130;
constexpr double kLeastContrast = 2.0;  // a bar that stands out less from the surface gets an outline

ChartView::ChartView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ChartView::setContent(const ui::ChartScale& scale, const ui::ChartScene& scene) {
    scale_ = scale;
    scene_ = scene;
    if (pointedBar_ >= static_cast<int>(scene_.bars.size())) pointedBar_ = -1;
    update();
}

void ChartView::setBackground(ui::Color background) {
    background_ = background;
    update();
}

QPointF ChartView::toView(double x, double y) const {
    return {(x - scale_.left) / (scale_.right - scale_.left) * width(),
            (y - scale_.top) / (scale_.bottom - scale_.top) * height()};
}

QPointF ChartView::fromView(QPointF place) const {
    return {scale_.left + place.x() / std::max(width(), 1) * (scale_.right - scale_.left),
            scale_.top + place.y() / std::max(height(), 1) * (scale_.bottom - scale_.top)};
}

QRectF ChartView::barPlace(const ui::ChartBar& bar) const {
    return QRectF(toView(bar.left, bar.top), toView(bar.left + bar.width, bar.top - bar.height)).normalized();
}

int ChartView::visibleBars() const {
    return static_cast<int>(std::count_if(scene_.bars.begin(), scene_.bars.end(),
                                          [](const ui::ChartBar& bar) { return bar.visible; }));
}

const ui::ChartBar& ChartView::visibleBar(int index) const {
    for (const ui::ChartBar& bar : scene_.bars)
        if (bar.visible && index-- == 0) return bar;
    throw Failure(RuntimeError::SubscriptOutOfRange);
}

void ChartView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor background = qtColor(background_, palette());
    painter.fillRect(rect(), background);

    // From here on in device pixels, whole ones.
    const double ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio);
    const auto device = [ratio](QPointF place) {
        return QPoint(static_cast<int>(std::lround(place.x() * ratio)),
                      static_cast<int>(std::lround(place.y() * ratio)));
    };
    const int hair = std::max(1, static_cast<int>(std::lround(ratio)));

    for (const auto& label : scene_.labels)
        if (label.visible) paintLabel(painter, label, ratio);
    for (std::size_t i = 0; i < scene_.bars.size(); ++i) {
        const ui::ChartBar& bar = scene_.bars[i];
        if (!bar.visible) continue;
        const QRectF place = barPlace(bar);
        const QRect whole(device(place.topLeft()), device(place.bottomRight()) - QPoint(1, 1));
        const QColor fill = qtColor(bar.fill, palette());
        painter.fillRect(whole, fill);
        if (bar.hatched) painter.fillRect(whole, QBrush(background, Qt::BDiagPattern));
        // Bars that touch or overlap stay told apart by a hair line.
        painter.fillRect(QRect(whole.left() - hair, whole.top(), hair, whole.height()), background);
        if (whole.height() > 0 && contrast(fill, background) < kLeastContrast) {
            QColor outline = palette().color(QPalette::WindowText);
            outline.setAlpha(kOutlineAlpha);
            painter.setPen(QPen(outline, hair));
            painter.drawRect(whole.adjusted(0, 0, -1, -1));
        }
        if (hasFocus() && static_cast<int>(i) == pointedBar_) {
            painter.setPen(QPen(palette().color(QPalette::Highlight), 2 * hair));
            painter.drawRect(whole.adjusted(-2 * hair, -2 * hair, 2 * hair, 2 * hair));
        }
    }
    for (const auto& line : scene_.lines) {
        if (!line.visible) continue;
        const int thick = std::max(1, static_cast<int>(std::lround(line.borderWidth * ratio)));
        const QPoint from = device(toView(line.x1, line.y1));
        const QPoint to = device(toView(line.x2, line.y2));
        const QColor color = qtColor(line.color, palette());
        if (from.x() == to.x() || from.y() == to.y()) {
            const QRect between = QRect(from, to).normalized();
            painter.fillRect(QRect(between.x() - (from.x() == to.x() ? thick / 2 : 0),
                                   between.y() - (from.y() == to.y() ? thick / 2 : 0),
                                   from.x() == to.x() ? thick : std::abs(to.x() - from.x()) + 1,
                                   from.y() == to.y() ? thick : std::abs(to.y() - from.y()) + 1),
                             color);
        } else {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(color, thick));
            painter.drawLine(from, to);
            painter.setRenderHint(QPainter::Antialiasing, false);
        }
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), hair));
        painter.drawRect(0, 0, static_cast<int>(width() * ratio) - 1, static_cast<int>(height() * ratio) - 1);
    }
}

void ChartView::paintLabel(QPainter& painter, const ui::ChartLabel& label, double ratio) const {
    painter.save();
    painter.scale(ratio, ratio);
    QFont font = this->font();
    font.setPointSize(label.fontSize);
    painter.setFont(font);
    const QFontMetricsF metrics(font, this);
    const QPointF corner = toView(label.left, label.top);
    const double wide = toView(label.left + label.width, label.top).x() - corner.x();
    const double top = label.verticallyCentered ? corner.y() - metrics.height() / 2 : corner.y();
    const QRectF place(corner.x(), std::round(top), wide, std::ceil(metrics.height()));
    if (!ui::isSystemColor(label.backColor)) painter.fillRect(place, qtColor(label.backColor, palette()));
    int flags = Qt::TextSingleLine | Qt::TextDontClip | Qt::AlignVCenter;
    switch (label.alignment) {
        case ui::ChartLabel::Alignment::Start:
            flags |= Qt::AlignLeft;
            break;
        case ui::ChartLabel::Alignment::Center:
            flags |= Qt::AlignHCenter;
            break;
        case ui::ChartLabel::Alignment::End:
            flags |= Qt::AlignRight;
            break;
    }
    painter.setPen(textColorOn(label.backColor, ui::kWindowTextColor, palette()));
    painter.drawText(place, flags, qtText(label.caption));
    painter.restore();
}

void ChartView::setPointed(int bar) {
    if (bar >= static_cast<int>(scene_.bars.size())) bar = -1;
    if (std::exchange(pointedBar_, bar) == bar) return;
    setAccessibleDescription(bar < 0 ? QString()
                                     : qtText(scene_.bars[static_cast<std::size_t>(bar)].accessibleName));
    QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
    update();
}

void ChartView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Menu)
        Q_EMIT menuKeyPressed();
    else if (event->key() != Qt::Key_Left && event->key() != Qt::Key_Right)
        event->ignore();  // the arrows are the form's, and nobody else's
}

// The right button has already been answered when it was pressed.
void ChartView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
}

void ChartView::focusInEvent(QFocusEvent* event) {
    update();
    QWidget::focusInEvent(event);
}

void ChartView::focusOutEvent(QFocusEvent* event) {
    update();
    QWidget::focusOutEvent(event);
}

}  // namespace dravik::qt
