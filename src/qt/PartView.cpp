#include "qt/PartView.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <map>
#include <utility>

#include "qt/Guard.h"
#include "qt/QtConversions.h"
#include "qt/QtImage.h"
#include "qt/QtPlatform.h"
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
    viewport()->setMouseTracking(true);
    model.setDisplay({1, devicePixelRatioF()});
    model.popUp = [this](ui::PopupMenu& menu, trainer::ViewPoint place) {
        QtPlatform::showMenu(menu, *this, viewport()->mapToGlobal(QPointF(place.x, place.y).toPoint()));
    };
    connections_.push_back(model.imageChanged.connect([this] { showImage(); }));
    connections_.push_back(model.focusWanted.connect([this] { setFocus(Qt::ShortcutFocusReason); }));
    connections_.push_back(model.changed.connect([this] { showState(); }));
    showImage();
    showState();
}

void PartView::showImage() {
    image_ = {};
    shrunk_ = {};
}

void PartView::showState() {
    const bool outer = std::exchange(showing_, true);
    showScroll(*horizontalScrollBar(), model_.horizontal());
    showScroll(*verticalScrollBar(), model_.vertical());
    showing_ = outer;
    viewport()->update();
}

void PartView::scrollContentsBy(int, int) {
    if (!showing_) model_.scrollTo(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

void PartView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().color(QPalette::Window).darker(108));
    if (!model_.image()) {
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
            shrunk_ = QPixmap::fromImage(shrunk(*model_.image(), size));
            shrunkScale_ = scale;
        }
        painter.drawPixmap(target, shrunk_, QRectF(shrunk_.rect()));
        return;
    }
    if (image_.isNull()) image_ = toQImage(*model_.image());
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
    for (const trainer::ViewFrame& frame : model_.frames()) paintFrame(painter, frame);
    for (const trainer::ViewTag& tag : model_.tags()) paintTag(painter, tag);
}

void PartView::paintFrame(QPainter& painter, const trainer::ViewFrame& frame) {
    QPolygonF corners;
    for (const trainer::ViewPoint& corner : frame.corners) corners << QPointF(corner.x, corner.y);
    const QColor color = qtColor(frame.color, palette());
    if (frame.filled) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPolygon(corners);
        return;
    }
    // A pale line below makes the frame visible on dark and on light parts.
    painter.setPen(QPen(QColor(255, 255, 255, 150), frame.heavy ? 4 : 3));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(corners);
    QPen pen(color, frame.heavy ? 2 : 1.3);
    if (frame.dashed) pen.setDashPattern({3, 2});
    painter.setPen(pen);
    painter.drawPolygon(corners);
}

void PartView::paintTag(QPainter& painter, const trainer::ViewTag& tag) {
    QFont font = this->font();
    font.setBold(true);
    font.setPixelSize(tag.textHeight);
    painter.setFont(font);
    const QFontMetricsF metrics(font, this);
    const QString text = qtText(tag.text);
    const QRectF place = qtRect(model_.tagPlace(tag, metrics.horizontalAdvance(text), metrics.height()));
    const QColor color = qtColor(tag.color, palette());
    painter.setPen(tag.outlined ? QPen(color, 1) : QPen(Qt::NoPen));
    painter.setBrush(tag.outlined ? QColor(Qt::white) : color);
    painter.drawRoundedRect(place, 2.5, 2.5);
    painter.setPen(tag.outlined ? color : QColor(Qt::white));
    painter.drawText(place, static_cast<int>(Qt::AlignCenter) | Qt::TextSingleLine | Qt::TextDontClip, text);
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
    if (event->button() != Qt::LeftButton) return;
    guarded([&] { model_.press(viewPoint(event->position())); });
    showCursor(event->position());
}

void PartView::mouseMoveEvent(QMouseEvent* event) {
    model_.moveTo(viewPoint(event->position()));
    showCursor(event->position());
}

void PartView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) guarded([&] { model_.release(viewPoint(event->position())); });
    showCursor(event->position());
}

void PartView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Mouse)
        guarded([&] { model_.pickAt(viewPoint(QPointF(viewport()->mapFromGlobal(event->globalPos())))); });
}

bool PartView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const std::string tip = model_.tipAt(viewPoint(QPointF(help->pos())));
        QToolTip::showText(help->globalPos(), qtText(tip), viewport());
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

bool PartView::event(QEvent* event) {
    // Tab goes from character to character first.
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if ((key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) && takesKey(*key)) return true;
    }
    return QAbstractScrollArea::event(event);
}

bool PartView::takesKey(const QKeyEvent& event) {
    using Name = trainer::ViewKey::Name;
    static const std::map<int, Name> kNames = {
        {Qt::Key_Left, Name::Left},        {Qt::Key_Right, Name::Right},   {Qt::Key_Up, Name::Up},
        {Qt::Key_Down, Name::Down},        {Qt::Key_Home, Name::Home},     {Qt::Key_End, Name::End},
        {Qt::Key_Tab, Name::Tab},          {Qt::Key_Backtab, Name::Tab},   {Qt::Key_Return, Name::Enter},
        {Qt::Key_Enter, Name::Enter},      {Qt::Key_Escape, Name::Escape}, {Qt::Key_Delete, Name::Delete},
        {Qt::Key_Backspace, Name::Delete}, {Qt::Key_Menu, Name::Menu}};
    trainer::ViewKey key;
    if (const auto name = kNames.find(event.key()); name != kNames.end()) key.name = name->second;
    if (event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z)
        key.letter = static_cast<char>('A' + (event.key() - Qt::Key_A));
    if (event.modifiers() & Qt::AltModifier) return false;
    key.shift = (event.modifiers() & Qt::ShiftModifier) != 0;
    key.ctrl = (event.modifiers() & Qt::ControlModifier) != 0;
    bool taken = false;
    guarded([&] { taken = model_.key(key); });
    if (taken) showCursor(QPointF(viewport()->mapFromGlobal(QCursor::pos())));
    return taken;
}

void PartView::keyPressEvent(QKeyEvent* event) {
    // The page keys go from part to part in this window.
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        event->ignore();
    else if (!takesKey(*event))
        QAbstractScrollArea::keyPressEvent(event);
}

void PartView::showCursor(QPointF place) {
    switch (model_.cursorAt(viewPoint(place))) {
        case trainer::ViewCursor::Arrow:
            return viewport()->setCursor(Qt::ArrowCursor);
        case trainer::ViewCursor::OpenHand:
            return viewport()->setCursor(Qt::OpenHandCursor);
        case trainer::ViewCursor::ClosedHand:
            return viewport()->setCursor(Qt::ClosedHandCursor);
        case trainer::ViewCursor::Cross:
            return viewport()->setCursor(Qt::CrossCursor);
        case trainer::ViewCursor::Move:
            return viewport()->setCursor(Qt::SizeAllCursor);
        case trainer::ViewCursor::SizeAcross:
            return viewport()->setCursor(Qt::SizeHorCursor);
        case trainer::ViewCursor::SizeDown:
            return viewport()->setCursor(Qt::SizeVerCursor);
        case trainer::ViewCursor::SizeFalling:
            return viewport()->setCursor(Qt::SizeFDiagCursor);
        case trainer::ViewCursor::SizeRising:
            return viewport()->setCursor(Qt::SizeBDiagCursor);
    }
}

}  // namespace dravik::qt
