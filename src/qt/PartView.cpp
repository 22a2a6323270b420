#include "qt/PartView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

constexpr double kLeastScale = 0.02;
constexpr double kMostScale = 32;
constexpr double kZoomStep = 1.25;
constexpr double kMostFittingScale = 4;  // a tiny image is not blown up further by itself
constexpr int kFitMargin = 12;
constexpr int kTagRoom = 18;  // below the image, for the labels of its last line
constexpr double kMostKeptPixels = 6e6;
const QColor kLabelled(0x1E, 0x6F, 0xD9);
const QColor kWarning(0xD8, 0x43, 0x15);

}  // namespace

PartView::PartView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("Part image"));
    viewport()->setCursor(Qt::ArrowCursor);
}

void PartView::setImage(const QImage& image, const QString& message) {
    image_ = image;
    message_ = message;
    shrunk_ = {};
    setAccessibleDescription(image.isNull() ? message : QString());
    viewport()->setCursor(image.isNull() ? Qt::ArrowCursor : Qt::OpenHandCursor);
    if (fits_) scale_ = fittingScale();
    updateScrollBars();
    viewport()->update();
    Q_EMIT scaleChanged();
}

void PartView::setCharacters(std::vector<trainer::LabelledCharacter> characters, int mismatch) {
    characters_ = std::move(characters);
    mismatch_ = mismatch;
    viewport()->update();
}

double PartView::fittingScale() const {
    if (image_.isNull()) return 1;
    const double wide = std::max(viewport()->width() - 2 * kFitMargin, 16);
    const double high = std::max(viewport()->height() - 2 * kFitMargin - kTagRoom, 16);
    return std::clamp(std::min(wide / image_.width(), high / image_.height()), kLeastScale,
                      kMostFittingScale);
}

void PartView::fit() {
    fits_ = true;
    scale_ = fittingScale();
    shrunk_ = {};
    updateScrollBars();
    viewport()->update();
    Q_EMIT scaleChanged();
}

void PartView::setScale(double scale) {
    zoomAround(scale, QRectF(viewport()->rect()).center());
}

void PartView::zoomIn() {
    setScale(scale_ * kZoomStep);
}

void PartView::zoomOut() {
    setScale(scale_ / kZoomStep);
}

void PartView::zoomAround(double scale, QPointF place) {
    const QPointF inImage = (place - origin()) / scale_;
    fits_ = false;
    scale_ = std::clamp(scale, kLeastScale, kMostScale);
    shrunk_ = {};
    updateScrollBars();
    const QPointF moved = origin() + inImage * scale_ - place;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                    static_cast<int>(std::lround(moved.x())));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + static_cast<int>(std::lround(moved.y())));
    viewport()->update();
    Q_EMIT scaleChanged();
}

void PartView::updateScrollBars() {
    const auto set = [](QScrollBar* bar, double content, int room) {
        bar->setRange(0, std::max(0, static_cast<int>(std::ceil(content)) - room));
        bar->setPageStep(room);
        bar->setSingleStep(std::max(room / 12, 1));
    };
    // A fitted image needs no scroll bars; showing them would change what fits.
    const bool needed = !fits_ && !image_.isNull();
    const auto policy = needed ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    setHorizontalScrollBarPolicy(policy);
    setVerticalScrollBarPolicy(policy);
    set(horizontalScrollBar(), needed ? image_.width() * scale_ + 2 * kFitMargin : 0, viewport()->width());
    set(verticalScrollBar(), needed ? image_.height() * scale_ + 2 * kFitMargin + kTagRoom : 0,
        viewport()->height());
}

// Where the image's left-top corner stands in the viewport.
QPointF PartView::origin() const {
    const double wide = image_.width() * scale_;
    const double high = image_.height() * scale_ + kTagRoom;
    const double x = wide + 2 * kFitMargin <= viewport()->width()
                         ? (viewport()->width() - wide) / 2
                         : kFitMargin - horizontalScrollBar()->value();
    const double y = high + 2 * kFitMargin <= viewport()->height()
                         ? (viewport()->height() - high) / 2
                         : kFitMargin - verticalScrollBar()->value();
    return {std::round(x), std::round(y)};
}

QRectF PartView::onScreen(const engine::FoundCharacter& place) const {
    return QRectF(origin() + QPointF(place.left, place.top) * scale_,
                  QSizeF(place.right - place.left, place.bottom - place.top) * scale_);
}

void PartView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().color(QPalette::Window).darker(108));
    if (image_.isNull()) {
        painter.setPen(palette().color(QPalette::WindowText));
        QFont font = this->font();
        font.setPointSizeF(font.pointSizeF() * 1.15);
        painter.setFont(font);
        painter.drawText(viewport()->rect().adjusted(24, 24, -24, -24),
                         static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, message_);
        return;
    }
    paintImage(painter);
    paintCharacters(painter);
}

void PartView::paintImage(QPainter& painter) {
    const QRectF target(origin(), QSizeF(image_.size()) * scale_);
    const double device = scale_ * devicePixelRatioF();
    if (device < 1 &&
        target.width() * target.height() * device * device / (scale_ * scale_) <= kMostKeptPixels) {
        if (shrunk_.isNull()) {
            const QSize size = (target.size() * devicePixelRatioF()).toSize().expandedTo(QSize(1, 1));
            shrunk_ =
                QPixmap::fromImage(image_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        }
        painter.drawPixmap(target, shrunk_, QRectF(shrunk_.rect()));
        return;
    }
    // Only what is in view, in whole image pixels.
    const QRectF seen = target & QRectF(viewport()->rect());
    if (seen.isEmpty()) return;
    const QRect source = QRectF((seen.topLeft() - target.topLeft()) / scale_, seen.size() / scale_)
                             .toAlignedRect()
                             .adjusted(-1, -1, 1, 1) &
                         image_.rect();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, device < 3);
    painter.drawImage(
        QRectF(target.topLeft() + QPointF(source.topLeft()) * scale_, QSizeF(source.size()) * scale_), image_,
        QRectF(source));
}

void PartView::paintCharacters(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF seen = QRectF(viewport()->rect()).adjusted(-40, -40, 40, 40);
    for (const auto& character : characters_) {
        const QRectF box = onScreen(character.place).adjusted(-2, -2, 2, 2);
        if (!box.intersects(seen)) continue;
        const bool warning = mismatch_ != 0 && character.label.empty();
        // A pale line below makes the box visible on dark and on light parts.
        painter.setPen(QPen(QColor(255, 255, 255, 150), warning ? 4 : 3));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(box);
        QPen pen(warning ? kWarning : kLabelled, warning ? 2 : 1.3);
        if (warning) pen.setDashPattern({3, 2});
        painter.setPen(pen);
        painter.drawRect(box);
    }
    for (const auto& character : characters_) {
        const QRectF box = onScreen(character.place).adjusted(-2, -2, 2, 2);
        if (!box.intersects(seen)) continue;
        if (!character.label.empty())
            paintTag(painter, box, qtText(character.label), false);
        else if (mismatch_ != 0)
            paintTag(painter, box, QStringLiteral("?"), true);
    }
    if (mismatch_ > 0 && !characters_.empty()) {
        // Typed characters that no box is left for.
        const QRectF last = onScreen(characters_.back().place).adjusted(-2, -2, 2, 2);
        paintTag(painter, last.translated(last.width() + 8, 0), QStringLiteral("+%1").arg(mismatch_), true);
    }
}

void PartView::paintTag(QPainter& painter, QRectF box, const QString& text, bool warning) {
    QFont font = this->font();
    font.setBold(true);
    font.setPixelSize(std::clamp(static_cast<int>(box.height() * 0.45), 9, 14));
    painter.setFont(font);
    const QFontMetricsF metrics(font, this);
    const double wide = std::max(metrics.horizontalAdvance(text) + 5, metrics.height() * 0.8);
    const QRectF tag(box.center().x() - wide / 2, box.bottom() + 1.5, wide, metrics.height());
    painter.setPen(Qt::NoPen);
    painter.setBrush(warning ? kWarning : kLabelled);
    painter.drawRoundedRect(tag, 2.5, 2.5);
    painter.setPen(Qt::white);
    painter.drawText(tag, static_cast<int>(Qt::AlignCenter) | Qt::TextSingleLine | Qt::TextDontClip, text);
}

void PartView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    if (fits_ && !image_.isNull()) {
        fit();
        return;
    }
    updateScrollBars();
}

void PartView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    const double steps = event->angleDelta().y() / 120.0;
    if (!image_.isNull() && steps != 0) zoomAround(scale_ * std::pow(kZoomStep, steps), event->position());
    event->accept();
}

void PartView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || image_.isNull()) return;
    dragging_ = true;
    dragFrom_ = event->position().toPoint();
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void PartView::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_) return;
    const QPoint moved = event->position().toPoint() - dragFrom_;
    dragFrom_ = event->position().toPoint();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
}

void PartView::mouseReleaseEvent(QMouseEvent*) {
    dragging_ = false;
    viewport()->setCursor(image_.isNull() ? Qt::ArrowCursor : Qt::OpenHandCursor);
}

void PartView::keyPressEvent(QKeyEvent* event) {
    // The page keys go from part to part in this window.
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        event->ignore();
    else
        QAbstractScrollArea::keyPressEvent(event);
}

}  // namespace dravik::qt
