#include "qt/PictureGridView.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <utility>

#include "qt/Guard.h"
#include "qt/Peer.h"
#include "qt/QtConversions.h"
#include "qt/Theme.h"

namespace dravik::qt {
using ui::PictureGrid;

PictureGridView::PictureGridView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

void PictureGridView::setModel(ui::PictureGrid* model) {
    model_ = model;
    if (model) guarded([&] { model_->setView(viewport()->width(), viewport()->height(), 1); });
}

QSize PictureGridView::sizeHint() const {
    return {6 * PictureGrid::kItemWidth + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
            2 * PictureGrid::kItemHeight + 2 * frameWidth()};
}

QSize PictureGridView::minimumSizeHint() const {
    return {2 * PictureGrid::kItemWidth + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
            PictureGrid::kItemHeight + 2 * frameWidth()};
}

void PictureGridView::showState() {
    if (!model_) return;
    const bool outer = std::exchange(showing_, true);
    const PictureGrid::Scroll scroll = model_->scroll();
    QScrollBar& bar = *verticalScrollBar();
    bar.setPageStep(scroll.page);
    bar.setSingleStep(scroll.line);
    bar.setRange(0, scroll.most);
    bar.setValue(scroll.position);
    showing_ = outer;
    const int current = model_->current();
    const QString description = current < 0 ? QString() : qtText(model_->item(current).tip);
    if (description != accessibleDescription()) {
        setAccessibleDescription(description);
        if (hasFocus()) {
            QAccessibleEvent event(this, QAccessible::DescriptionChanged);
            QAccessible::updateAccessibility(&event);
        }
    }
    viewport()->update();
}

void PictureGridView::scrollContentsBy(int, int) {
    if (!showing_ && model_) guarded([&] { model_->scrollTo(verticalScrollBar()->value()); });
}

void PictureGridView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    if (model_) guarded([&] { model_->setView(viewport()->width(), viewport()->height(), 1); });
}

void PictureGridView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().color(QPalette::Base));
    if (!model_) return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    guarded([&] {
        const PictureGrid::Range seen = model_->seen();
        for (int index = seen.first; index < seen.end; ++index) paintItem(painter, index);
    });
}

void PictureGridView::paintItem(QPainter& painter, int index) {
    const ui::PictureItem item = model_->item(index);
    const PictureGrid::Place place = model_->itemPlace(index);
    const QRectF cell = QRectF(place.left, place.top, place.width, place.height).adjusted(1, 1, -1, -1);
    const bool selected = model_->isSelected(index);
    const QColor ground = palette().color(selected ? QPalette::Highlight : QPalette::Base);
    const QColor ink = palette().color(selected ? QPalette::HighlightedText : QPalette::Text);
    if (selected) painter.fillRect(cell, ground);

    const QRectF box(cell.left() + (cell.width() - PictureGrid::kPictureSide) / 2,
                     cell.top() + PictureGrid::kPadding - 1, PictureGrid::kPictureSide,
                     PictureGrid::kPictureSide);
    if (item.picture.levels.empty()) {
        QFont font = this->font();
        font.setPixelSize(PictureGrid::kPictureSide / 2);
        painter.setFont(font);
        QColor pale = ink;
        pale.setAlpha(110);
        painter.setPen(pale);
        painter.drawText(box, static_cast<int>(Qt::AlignCenter), qtText(item.caption));
    } else {
        const QImage image(item.picture.levels.data(), item.picture.width, item.picture.height,
                           item.picture.width, QImage::Format_Grayscale8);
        const QSizeF size = QSizeF(image.size()).scaled(box.size(), Qt::KeepAspectRatio);
        painter.drawImage(QRectF(box.center() - QPointF(size.width(), size.height()) / 2, size), image);
    }
    painter.setFont(font());
    const QRectF words(cell.left() + 3, box.bottom(), cell.width() - 6, cell.bottom() - box.bottom());
    const QString note = qtText(item.note);
    painter.setPen(item.warns && !selected ? warningColor(palette()) : ink);
    painter.drawText(words, static_cast<int>(Qt::AlignRight | Qt::AlignVCenter), note);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(ink);
    painter.drawText(words, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), qtText(item.caption));
    if (index != model_->current() || !hasFocus()) return;
    painter.setPen(QPen(selected ? ink : palette().color(QPalette::Highlight), 1, Qt::DotLine));
    painter.drawRect(cell.adjusted(0.5, 0.5, -0.5, -0.5));
}

void PictureGridView::mousePressEvent(QMouseEvent* event) {
    if (!model_ || event->button() != Qt::LeftButton) return;
    guarded([&] {
        model_->choose(model_->itemAt(event->position().x(), event->position().y()),
                       shiftState(event->modifiers()));
    });
}

void PictureGridView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!model_ || event->button() != Qt::LeftButton) return;
    if (model_->itemAt(event->position().x(), event->position().y()) == model_->current())
        guarded([&] { model_->opened(); });
}

void PictureGridView::keyPressEvent(QKeyEvent* event) {
    if (!model_) return QAbstractScrollArea::keyPressEvent(event);
    const auto move = ui::keyMove(virtualKey(event->key()));
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    const QString text = event->text();
    if (move)
        guarded([&] { model_->move(*move, shiftState(event->modifiers())); });
    else if (event->matches(QKeySequence::SelectAll))
        guarded([&] { model_->selectAll(); });
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        guarded([&] { model_->opened(); });
    else if (plain && !text.isEmpty() && text[0].isPrint() && !text[0].isSpace())
        guarded([&] { model_->typed(utf8(text)); });
    else if (event->key() != Qt::Key_Delete)
        QAbstractScrollArea::keyPressEvent(event);
}

void PictureGridView::focusInEvent(QFocusEvent* event) {
    viewport()->update();
    QAbstractScrollArea::focusInEvent(event);
}

void PictureGridView::focusOutEvent(QFocusEvent* event) {
    viewport()->update();
    QAbstractScrollArea::focusOutEvent(event);
}

bool PictureGridView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !model_) return QAbstractScrollArea::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int index = model_->itemAt(help->pos().x(), help->pos().y());
    QToolTip::showText(help->globalPos(), index < 0 ? QString() : qtText(model_->item(index).tip), this);
    return true;
}

}  // namespace dravik::qt
