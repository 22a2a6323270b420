#include "qt/PartView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <utility>

#include "qt/QtConversions.h"
#include "qt/QtImage.h"
#include "qt/Theme.h"

namespace dravik::qt {
namespace {

constexpr double kMostKeptPixels = 6e6;
constexpr double kUnitsOfWheelStep = 120;

trainer::ViewPoint viewPoint(QPointF point) {
    return {point.x(), point.y()};
}

void showScroll(QScrollBar& bar, const trainer::ScrollState& state) {
    bar.setPageStep(state.page);
    bar.setSingleStep(state.line);
    bar.setRange(0, state.most);
    bar.setValue(state.position);
}

}  // namespace

PartView::PartView(trainer::PartViewModel& model, QWidget* parent)
    : QAbstractScrollArea(parent), model_(model) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QString::fromUtf8(trainer::kPartViewName));
    model.setDisplay({1, devicePixelRatioF()});
    connections_.push_back(model.imageChanged.connect([this] { showImage(); }));
    connections_.push_back(model.changed.connect([this] { showState(); }));
    showImage();
    showState();
}

void PartView::showImage() {
    image_ = model_.image() ? toQImage(*model_.image()) : QImage();
    shrunk_ = {};
}

void PartView::showState() {
    const bool outer = std::exchange(showing_, true);
    showScroll(*horizontalScrollBar(), model_.horizontal());
    showScroll(*verticalScrollBar(), model_.vertical());
    showing_ = outer;
    viewport()->setCursor(!model_.image()       ? Qt::ArrowCursor
                          : model_.isDragging() ? Qt::ClosedHandCursor
                                                : Qt::OpenHandCursor);
    viewport()->update();
}

void PartView::scrollContentsBy(int, int) {
    if (!showing_) model_.scrollTo(horizontalScrollBar()->value(), verticalScrollBar()->value());
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
                         static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, qtText(model_.message()));
        return;
    }
    paintImage(painter);
    paintCharacters(painter);
}

void PartView::paintImage(QPainter& painter) {
    const QRectF target = qtRect(model_.imagePlace());
    const double scale = model_.scale();
    const double ratio = devicePixelRatioF();
    if (scale * ratio < 1 && target.width() * target.height() * ratio * ratio <= kMostKeptPixels) {
        if (shrunk_.isNull() || shrunkScale_ != scale) {
            const QSize size = (target.size() * ratio).toSize().expandedTo(QSize(1, 1));
            shrunk_ =
                QPixmap::fromImage(image_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
            shrunkScale_ = scale;
        }
        painter.drawPixmap(target, shrunk_, QRectF(shrunk_.rect()));
        return;
    }
    // Only what is in view, in whole image pixels.
    const QRectF seen = target & QRectF(viewport()->rect());
    if (seen.isEmpty()) return;
    const QRect source = QRectF((seen.topLeft() - target.topLeft()) / scale, seen.size() / scale)
                             .toAlignedRect()
                             .adjusted(-1, -1, 1, 1) &
                         image_.rect();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, scale * ratio < 3);
    painter.drawImage(
        QRectF(target.topLeft() + QPointF(source.topLeft()) * scale, QSizeF(source.size()) * scale), image_,
        QRectF(source));
}

void PartView::paintCharacters(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    const auto marks = model_.marks();
    for (const trainer::CharacterMark& mark : marks) {
        if (!mark.framed) continue;
        const QRectF box = qtRect(mark.box);
        // A pale line below makes the box visible on dark and on light parts.
        painter.setPen(QPen(QColor(255, 255, 255, 150), mark.warns ? 4 : 3));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(box);
        QPen pen(qtColor(mark.color(), palette()), mark.warns ? 2 : 1.3);
        if (mark.warns) pen.setDashPattern({3, 2});
        painter.setPen(pen);
        painter.drawRect(box);
    }
    for (const trainer::CharacterMark& mark : marks)
        if (!mark.tag.empty()) paintTag(painter, mark);
}

void PartView::paintTag(QPainter& painter, const trainer::CharacterMark& mark) {
    QFont font = this->font();
    font.setBold(true);
    font.setPixelSize(model_.tagTextHeight(mark));
    painter.setFont(font);
    const QFontMetricsF metrics(font, this);
    const QString text = qtText(mark.tag);
    const QRectF tag = qtRect(model_.tagPlace(mark, metrics.horizontalAdvance(text), metrics.height()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(qtColor(mark.color(), palette()));
    painter.drawRoundedRect(tag, 2.5, 2.5);
    painter.setPen(Qt::white);
    painter.drawText(tag, static_cast<int>(Qt::AlignCenter) | Qt::TextSingleLine | Qt::TextDontClip, text);
}

void PartView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    model_.setViewport(viewport()->width(), viewport()->height());
}

void PartView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    const double steps = event->angleDelta().y() / kUnitsOfWheelStep;
    if (steps != 0) model_.zoomBy(steps, viewPoint(event->position()));
    event->accept();
}

void PartView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && model_.beginDrag(viewPoint(event->position()))) showState();
}

void PartView::mouseMoveEvent(QMouseEvent* event) {
    model_.dragTo(viewPoint(event->position()));
}

void PartView::mouseReleaseEvent(QMouseEvent*) {
    model_.endDrag();
    showState();
}

void PartView::keyPressEvent(QKeyEvent* event) {
    // The page keys go from part to part in this window.
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        event->ignore();
    else
        QAbstractScrollArea::keyPressEvent(event);
}

}  // namespace dravik::qt
