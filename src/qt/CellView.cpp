#include "qt/CellView.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <cmath>
#include <limits>

#include "qt/Theme.h"

namespace dravik::qt {

constexpr int kFigureHeight = 9;
constexpr int kFigureRoom = 4;

CellView::CellView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void CellView::setCaption(const QString& caption, const QString& figure) {
    caption_ = caption;
    figure_ = figure;
    update();
}

void CellView::setColors(ui::Color background, ui::Color foreground) {
    background_ = background;
    foreground_ = foreground;
    update();
}

QSize CellView::sizeHint() const {
    const int height = fontMetrics().height() + 4;
    return {std::max(height, fontMetrics().horizontalAdvance(caption_) + 8), height};
}

void CellView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor background = qtColor(background_, palette());
    painter.fillRect(rect(), background);

    const QColor frame = palette().color(QPalette::WindowText);
    const auto line = [&](QColor color, QRectF place, double width) {
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(place.adjusted(width / 2, width / 2, -width / 2, -width / 2));
    };
    line(QColor(frame.red(), frame.green(), frame.blue(), 110), rect(), 1);
    if (hasFocus()) {
        line(palette().color(QPalette::Highlight), rect(), 2);
        line(readableOn(background), QRectF(rect()).adjusted(2, 2, -2, -2), 1);
    }

    QFont fitting = font();
    const int room = width() - 4;
    const int wide = fontMetrics().horizontalAdvance(caption_);
    if (wide > room && wide > 0) fitting.setPointSizeF(std::max(5.0, fitting.pointSizeF() * room / wide));
    painter.setFont(fitting);
    painter.setPen(textColorOn(background_, foreground_, palette()));
    const int aside = figure_.isEmpty() ? 0 : kFigureRoom;
    painter.drawText(rect().adjusted(0, 0, -aside, -aside),
                     static_cast<int>(Qt::AlignCenter) | Qt::TextSingleLine, caption_);
    if (figure_.isEmpty()) return;
    QFont small = font();
    small.setBold(false);
    small.setPixelSize(kFigureHeight);
    painter.setFont(small);
    painter.drawText(rect().adjusted(0, 0, -2, -1),
                     static_cast<int>(Qt::AlignRight) | Qt::AlignBottom | Qt::TextSingleLine, figure_);
}

void CellView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Menu ||
        (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)) {
        Q_EMIT menuRequested();
        return;
    }
    CellView* next =
        group && event->modifiers() == Qt::NoModifier ? group->neighbour(*this, event->key()) : nullptr;
    if (next)
        next->setFocus(Qt::OtherFocusReason);
    else
        event->ignore();
}

// The right button has already been answered when it was pressed.
void CellView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
}

void CellView::focusInEvent(QFocusEvent* event) {
    if (group) group->setTabStop(*this);
    update();
    QWidget::focusInEvent(event);
    if (event->reason() != Qt::MouseFocusReason) Q_EMIT focused();
}

void CellView::focusOutEvent(QFocusEvent* event) {
    update();
    QWidget::focusOutEvent(event);
}

void CellGroup::add(CellView& cell) {
    cell.group = this;
    if (!cells_.empty()) cell.setFocusPolicy(Qt::ClickFocus);
    cells_.push_back(&cell);
}

void CellGroup::setTabStop(CellView& cell) {
    for (CellView* other : cells_) other->setFocusPolicy(other == &cell ? Qt::StrongFocus : Qt::ClickFocus);
}

CellView* CellGroup::neighbour(const CellView& from, int key) const {
    if (key == Qt::Key_Home) return cells_.front();
    if (key == Qt::Key_End) return cells_.back();
    QPoint direction;
    switch (key) {
        case Qt::Key_Left:
            direction = {-1, 0};
            break;
        case Qt::Key_Right:
            direction = {1, 0};
            break;
        case Qt::Key_Up:
            direction = {0, -1};
            break;
        case Qt::Key_Down:
            direction = {0, 1};
            break;
        default:
            return nullptr;
    }
    constexpr int kSidewaysWeight = 3;
    CellView* best = nullptr;
    int leastCost = std::numeric_limits<int>::max();
    for (CellView* cell : cells_) {
        const QPoint way = cell->geometry().center() - from.geometry().center();
        const int ahead = QPoint::dotProduct(way, direction);
        const int sideways = std::abs(QPoint::dotProduct(way, QPoint(direction.y(), direction.x())));
        // A cell of another row is no neighbour to the left or right.
        const bool sameRow = sideways < from.height() / 2;
        if (ahead <= 0 || !cell->isVisible() || (direction.y() == 0 && !sameRow)) continue;
        const int cost = ahead + kSidewaysWeight * sideways;
        if (cost < leastCost) {
            leastCost = cost;
            best = cell;
        }
    }
    return best;
}

}  // namespace dravik::qt
